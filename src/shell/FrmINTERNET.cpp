#include "shell/FrmINTERNET.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>
#include <array>

#include "shell/AppState.h"
#include "shell/proxy_list.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView builtInHost = u"127.0.0.1:8180";

template <class Control>
Control* named(Control* control, const QString& name) {
  control->setObjectName(name);
  return control;
}

QString numberText(const QCheckBox* box) {
  return box->isChecked() ? u"1"_s : u"0"_s;
}

void takeNumber(QCheckBox* box, const QString& text) {
  if (!text.isEmpty()) box->setChecked(Val(text) != 0);
}

using Options = std::array<QRadioButton*, 3>;

// Without groups of their own the six would put out each other.
void group(const Options& options, QObject* owner) {
  auto* buttons = new QButtonGroup(owner);
  for (auto* option : options) buttons->addButton(option);
}

QString chosen(const Options& options) {
  for (int i = 0; i < 3; ++i)
    if (options.at(static_cast<size_t>(i))->isChecked()) return textOf(i);
  return {};
}

void choose(const Options& options, const QString& text) {
  for (int i = 0; i < 3; ++i)
    if (text == textOf(i)) options.at(static_cast<size_t>(i))->setChecked(true);
  // Tab comes to the chosen one: from another the arrow keys would change the choice unasked.
  for (auto* option : options) {
    option->setFocusPolicy(option->isChecked() ? Qt::StrongFocus : Qt::ClickFocus);
  }
}

QGroupBox* frame(const QString& name, const QString& caption) {
  return named(new QGroupBox(caption), name);
}

}  // namespace

FrmINTERNET::FrmINTERNET() : Form(Kind::Dialog, u"FrmINTERNET"_s, u"网络设置"_s) {
  makeControls();
  layOut();
  connectKeys();
}

void FrmINTERNET::makeControls() {
  TextWebServer = new TextBox(u"TextWebServer"_s, TextBox::Lines::One, this);
  TextWebServer->editor()->setAccessibleName(u"服务器地址"_s);
  TextWebServer->setText(builtInHost.toString());
  Option1 = named(new QRadioButton(u"默认"_s, this), u"Option1"_s);
  Option2 = named(new QRadioButton(u"拨号上网"_s, this), u"Option2"_s);
  Option3 = named(new QRadioButton(u"局域网代理(X.X.X.X:PORT)"_s, this), u"Option3"_s);
  group({Option1, Option2, Option3}, this);
  Option1->setChecked(true);
  TextProxy = new TextBox(u"TextProxy"_s, TextBox::Lines::One, this);
  TextProxy->editor()->setAccessibleName(u"代理"_s);
  Command1 = named(new QPushButton(u"添加"_s, this), u"Command1"_s);
  List1 = named(new QListWidget(this), u"List1"_s);
  List1->setUniformItemSizes(true);
  List1->setAccessibleName(u"网络代理"_s);
  Command2 = named(new QPushButton(u"删除"_s, this), u"Command2"_s);
  Option4 = named(new QRadioButton(u"POST方式(慢)"_s, this), u"Option4"_s);
  Option5 = named(new QRadioButton(u"混合方式(较快)"_s, this), u"Option5"_s);
  Option6 = named(new QRadioButton(u"GET方式(快)"_s, this), u"Option6"_s);
  group({Option4, Option5, Option6}, this);
  Option5->setChecked(true);
  CheckAutoDial = named(new QCheckBox(u"自动调用拨号网络"_s, this), u"CheckAutoDial"_s);
  CheckAutoPeer = named(new QCheckBox(u"启动时启动消息窗口"_s, this), u"CheckAutoPeer"_s);
  CheckViewPict = named(new QCheckBox(u"在所有窗口中显示图片"_s, this), u"CheckViewPict"_s);
  TextPage = new TextBox(u"TextPage"_s, TextBox::Lines::One, this);
  TextPage->editor()->setAccessibleName(u"分页显示行数"_s);
  TextPage->setText(u"10"_s);
  Command3 = named(new QPushButton(u"确认"_s, this), u"Command3"_s);
  Command4 = named(new QPushButton(u"取消"_s, this), u"Command4"_s);
}

QWidget* FrmINTERNET::serverFrame() {
  auto* box = frame(u"FrameServer"_s, u"服务器设置"_s);
  auto* label = named(new QLabel(u"服务器地址："_s), u"LabelWebServer"_s);
  label->setBuddy(TextWebServer->editor());
  auto* row = new QHBoxLayout(box);
  row->addWidget(label);
  row->addWidget(TextWebServer, 1);
  return box;
}

QWidget* FrmINTERNET::proxyFrame() {
  auto* box = frame(u"FrameProxy"_s, u"网络代理"_s);
  auto* options = new QHBoxLayout;
  options->setSpacing(18);
  for (auto* option : {Option1, Option2, Option3}) options->addWidget(option);
  options->addStretch(1);
  List1->setFixedHeight(6 * List1->fontMetrics().lineSpacing());
  List1->setMinimumWidth(360);
  auto* grid = new QGridLayout(box);
  grid->setColumnStretch(0, 1);
  grid->addLayout(options, 0, 0, 1, 2);
  grid->addWidget(TextProxy, 1, 0);
  grid->addWidget(Command1, 1, 1);
  grid->addWidget(List1, 2, 0);
  grid->addWidget(Command2, 2, 1, Qt::AlignTop);
  return box;
}

QWidget* FrmINTERNET::modeFrame() {
  auto* box = frame(u"FrameMode"_s, u"数据/安全提交方式"_s);
  auto* row = new QHBoxLayout(box);
  row->setSpacing(18);
  for (auto* option : {Option4, Option5, Option6}) row->addWidget(option);
  row->addStretch(1);
  return box;
}

QWidget* FrmINTERNET::otherSettings() {
  auto* area = new QWidget;
  auto* label = named(new QLabel(u"分页显示行数："_s), u"LabelPage"_s);
  label->setBuddy(TextPage->editor());
  TextPage->setFixedWidth(6 * TextPage->fontMetrics().averageCharWidth() + 40);
  auto* grid = new QGridLayout(area);
  // In line with what stands inside the frames.
  grid->setContentsMargins(12, 0, 12, 0);
  grid->setHorizontalSpacing(18);
  grid->addWidget(CheckAutoDial, 0, 0);
  grid->addWidget(CheckAutoPeer, 0, 1);
  grid->addWidget(CheckViewPict, 1, 0);
  auto* page = new QHBoxLayout;
  page->addWidget(label);
  page->addWidget(TextPage);
  page->addStretch(1);
  grid->addLayout(page, 1, 1);
  grid->setColumnStretch(2, 1);
  return area;
}

void FrmINTERNET::layOut() {
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  buttons->addWidget(Command3);
  buttons->addWidget(Command4);

  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(16, 14, 16, 14);
  column->setSpacing(12);
  column->addWidget(serverFrame());
  column->addWidget(proxyFrame());
  column->addWidget(modeFrame());
  column->addWidget(otherSettings());
  column->addStretch(1);
  column->addLayout(buttons);

  const std::array<QWidget*, 17> order{TextWebServer->editor(),
                                       Option1,
                                       Option2,
                                       Option3,
                                       TextProxy->editor(),
                                       Command1,
                                       List1,
                                       Command2,
                                       Option4,
                                       Option5,
                                       Option6,
                                       CheckAutoDial,
                                       CheckAutoPeer,
                                       CheckViewPict,
                                       TextPage->editor(),
                                       Command3,
                                       Command4};
  for (size_t i = 1; i < order.size(); ++i) setTabOrder(order.at(i - 1), order.at(i));
  order.front()->setFocus();
}

void FrmINTERNET::connectKeys() {
  connect(Command1, &QPushButton::clicked, this, &FrmINTERNET::addProxy);
  connect(Command2, &QPushButton::clicked, this, &FrmINTERNET::removeProxy);
  connect(Command3, &QPushButton::clicked, this, &FrmINTERNET::confirm);
  connect(Command4, &QPushButton::clicked, this, [this] { unload(); });

  // Return confirms, but adds what was just typed into the proxy box.
  const auto setDefault = [this](bool adding) {
    Command1->setDefault(adding);
    Command3->setDefault(!adding);
  };
  connect(TextProxy, &TextBox::gotFocus, this, [setDefault] { setDefault(true); });
  connect(TextProxy, &TextBox::lostFocus, this, [setDefault] { setDefault(false); });
  connect(new QShortcut(Qt::Key_Delete, List1, nullptr, nullptr, Qt::WidgetShortcut),
          &QShortcut::activated, Command2, [this] { Command2->click(); });
  Command3->setDefault(true);
}

void FrmINTERNET::onLoad() {
  LoadSettings();
}

void FrmINTERNET::onUnload() {
  if (app().settings.text(u"WebServer"_s).isEmpty()) SaveSettings();
}

void FrmINTERNET::LoadSettings() {
  const auto& settings = app().settings;
  choose({Option1, Option2, Option3}, settings.text(u"AccessType"_s));
  const QString proxies = settings.text(u"Proxy"_s);
  if (!proxies.isEmpty()) List1->addItems(SplitProxyList(proxies));
  choose({Option4, Option5, Option6}, settings.text(u"Unicode"_s));
  takeNumber(CheckAutoDial, settings.text(u"AutoDial"_s));
  takeNumber(CheckAutoPeer, settings.text(u"AutoPeer"_s));
  const QString page = settings.text(u"PageSize"_s);
  if (!page.isEmpty()) TextPage->setText(page);
  takeNumber(CheckViewPict, settings.text(u"ViewPict"_s));
}

void FrmINTERNET::SaveSettings() {
  QStringList proxies;
  for (int row = 0; row < List1->count(); ++row) proxies << List1->item(row)->text();

  auto& state = app();
  auto& settings = state.settings;
  settings.set(u"WebServer"_s, TextWebServer->text());
  settings.set(u"AccessType"_s, chosen({Option1, Option2, Option3}));
  settings.set(u"Proxy"_s, JoinProxyList(proxies));
  settings.set(u"Unicode"_s, chosen({Option4, Option5, Option6}));
  settings.set(u"AutoDial"_s, numberText(CheckAutoDial));
  settings.set(u"AutoPeer"_s, numberText(CheckAutoPeer));
  settings.set(u"PageSize"_s, TextPage->text());
  settings.set(u"ViewPict"_s, numberText(CheckViewPict));

  // The state is read anew only behind this, so new proxies come into effect one confirm later.
  state.inetQuotes.AccessType = state.gAccessType;
  state.inetQuotes.Proxy = state.gProxy;
}

void FrmINTERNET::addProxy() {
  List1->addItem(Trim(TextProxy->text()));
  TextProxy->setText({});
}

void FrmINTERNET::removeProxy() {
  const auto selected = List1->selectedItems();
  if (selected.isEmpty()) {
    app().forms.prompts->ask(this, {.text = u"请先选择要删除的代理！"_s, .title = {}});
    return;
  }
  qDeleteAll(selected);
  // The next press must not take the neighbour unseen.
  List1->setCurrentItem(nullptr);
}

void FrmINTERNET::confirm() {
  SaveSettings();
  readSettingsIntoState();
  unload();
}

void readSettingsIntoState() {
  auto& state = app();
  const auto& settings = state.settings;
  state.gAccessType = settings.number(u"AccessType"_s);
  state.gProxy = settings.text(u"Proxy"_s);
  state.gUnicode = settings.number(u"Unicode"_s);
  state.gAutoDial = settings.number(u"AutoDial"_s);
  // From the same key as the dialer: the own key of the message window is only ever written.
  state.gAutoPeer = settings.number(u"AutoDial"_s);
  state.gPageSize = settings.number(u"PageSize"_s);
  state.gViewPict = settings.number(u"ViewPict"_s);
}

}  // namespace qinghe
