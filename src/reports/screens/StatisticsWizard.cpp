#include "reports/screens/StatisticsWizard.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "forms/Icons.h"
#include "reports/ReportWindow.h"
#include "shell/AppState.h"
#include "values/failure.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

enum Nav : std::size_t { Cancelling = 1, Back = 2, Next = 3, Finishing = 4 };

constexpr qint16 lastStep = 5;
constexpr int usualOption = 1;
constexpr int pictureSize = 56;
constexpr int margin = 12;

const QString categoryImage = u"Lebi"_s;
const QString goodsImage = u"Ximu"_s;
const QString goodsTag = u"ximu"_s;

const ReportLayout* layoutOf(StatisticsReport report) {
  switch (report) {
    case StatisticsReport::Category:
      return &rptGOKU_LEBI();
    case StatisticsReport::Partner:
      return &rptGOKU_DAWE();
    case StatisticsReport::Month:
      return &rptGOKU_MONTH();
    case StatisticsReport::Detail:
      return &rptXIMU_GOKU();
    case StatisticsReport::None:
      break;
  }
  return nullptr;
}

/// The one way in which the wizard leaves a list or a report that fails as it is, without a word.
template <class Work>
void quietly(Work&& work) {
  try {
    work();
  } catch (const Failure&) {
  }
}

QString arrayName(const QString& name, std::size_t index) {
  return u"%1(%2)"_s.arg(name).arg(index);
}

QLabel* labelFor(QWidget* control, const QString& text) {
  auto* label = new QLabel(text);
  label->setBuddy(control);
  return label;
}

}  // namespace

StatisticsWizard::StatisticsWizard(WizardLook look)
    : Form(Kind::Child, look.form, look.caption), look_(std::move(look)) {
  makeControls();
  makeOptions();
  layOut();
  connectControls();
}

void StatisticsWizard::makeControls() {
  setWindowIcon(iconFor(look_.icon));
  SSTab1 = new TabControl(u"SSTab1"_s, TabControl::WalkedBy::Code, this);
  picNav = new QWidget(this);
  picNav->setObjectName(u"picNav"_s);
  static const std::array<QString, 5> captions{QString(), u"取消"_s, u"上一步(&B)"_s,
                                               u"下一步(&N)"_s, u"完成(&F)"_s};
  for (std::size_t i = Cancelling; i < cmdNav.size(); ++i) {
    cmdNav.at(i) = new QPushButton(captions.at(i), picNav);
    cmdNav.at(i)->setObjectName(arrayName(u"cmdNav"_s, i));
    cmdNav.at(i)->setAutoDefault(true);  // Enter presses the button with the focus
  }
  TreeView1 = new TreeView(u"TreeView1"_s);
  TreeView1->setAccessibleName(u"商品类别"_s);
  TreeView2 = new TreeView(u"TreeView2"_s);
  TreeView2->setAccessibleName(u"商品名称"_s);
  DTPickerFrom = new DatePicker(u"DTPickerFrom"_s);
  DTPickerTo = new DatePicker(u"DTPickerTo"_s);
  comboDawe = new ComboBox(u"comboDawe"_s);
  ComboYewu = new ComboBox(u"ComboYewu"_s);
  ComboKufa = new ComboBox(u"ComboKufa"_s);
  numberBox = new TextBox(look_.numberBox);
  CheckDetail = new QCheckBox(u"只看合计数"_s);
  CheckDetail->setObjectName(u"CheckDetail"_s);
}

void StatisticsWizard::makeOptions() {
  // One choice out of both pages.
  auto* group = new QButtonGroup(this);
  for (std::size_t i = 0; i < look_.options.size(); ++i) {
    auto* option = new QRadioButton(look_.options.at(i).text);
    option->setObjectName(arrayName(u"Option1"_s, i));
    group->addButton(option);
    Option1.push_back(option);
  }
  Option1.at(usualOption)->setChecked(true);
}

void StatisticsWizard::layOut() {
  layOutLists();
  layOutRange();
  layOutOrders();
  layOutOptions();

  auto* buttons = new QHBoxLayout(picNav);
  buttons->setContentsMargins(0, 0, 0, 0);
  buttons->addStretch(1);
  for (std::size_t i = Cancelling; i < cmdNav.size(); ++i) {
    if (i == Back || i == Finishing) buttons->addSpacing(margin);
    buttons->addWidget(cmdNav.at(i));
  }
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(margin, margin, margin, margin);
  column->setSpacing(margin);
  column->addWidget(SSTab1, 1);
  column->addWidget(picNav);
  resize(sizeHint().expandedTo({600, 420}));
}

QVBoxLayout* StatisticsWizard::addPage(const QString& caption, const QString& image,
                                       const QString& frame, const QString& frameCaption) {
  auto* page = SSTab1->addPage(caption);
  auto* picture = new QLabel;
  picture->setObjectName(arrayName(u"imgStep"_s, imgStep.size()));
  picture->setPixmap(iconFor(image).pixmap(QSize(pictureSize, pictureSize), devicePixelRatioF()));
  imgStep.push_back(picture);
  auto* box = new QGroupBox(frameCaption);
  box->setObjectName(frame);
  auto* row = new QHBoxLayout(page);
  row->setContentsMargins(margin, margin, margin, margin);
  row->setSpacing(margin + margin / 2);
  row->addWidget(picture, 0, Qt::AlignTop);
  row->addWidget(box, 1);
  auto* inside = new QVBoxLayout(box);
  inside->setContentsMargins(margin, margin, margin, margin);
  return inside;
}

void StatisticsWizard::layOutLists() {
  addPage(u"部门"_s, categoryImage, u"Frame1"_s, u"商品类别"_s)->addWidget(TreeView1);
  addPage(u"选择类别"_s, goodsImage, u"Frame2"_s, u"商品名称"_s)->addWidget(TreeView2);
}

void StatisticsWizard::layOutRange() {
  auto* inside = addPage(u"日期范围"_s, look_.icon, u"Frame3"_s, u"日期范围"_s);
  auto* grid = new QGridLayout;
  grid->setHorizontalSpacing(margin);
  grid->setVerticalSpacing(margin);
  grid->setColumnStretch(2, 1);
  const std::array<std::pair<DatePicker*, QString>, 2> ends{
      {{DTPickerFrom, u"起始日期"_s}, {DTPickerTo, u"截止日期"_s}}};
  int row = 0;
  for (const auto& [picker, text] : ends) {
    picker->setLabel(text);
    grid->addWidget(labelFor(picker->editor(), text), row, 0);
    grid->addWidget(picker, row++, 1);
  }
  inside->addLayout(grid);
  inside->addStretch(1);
}

void StatisticsWizard::layOutOrders() {
  // Both wizards have the caption of the purchases here.
  auto* inside = addPage(u"进货范围"_s, u"Qyxx"_s, u"Frame4"_s, u"订单范围"_s);
  auto* grid = new QGridLayout;
  grid->setHorizontalSpacing(margin);
  grid->setVerticalSpacing(margin);
  grid->setColumnStretch(1, 1);
  struct Row {
    QWidget* control;
    QWidget* focus;
    QString text;
  };
  const std::array<Row, 4> rows{{{comboDawe, comboDawe, look_.partnerLabel},
                                 {ComboYewu, ComboYewu, u"业务员"_s},
                                 {ComboKufa, ComboKufa, look_.stockLabel},
                                 {numberBox, numberBox->editor(), look_.numberLabel}}};
  int line = 0;
  for (const Row& row : rows) {
    row.focus->setAccessibleName(row.text);
    grid->addWidget(labelFor(row.focus, row.text), line, 0);
    grid->addWidget(row.control, line++, 1);
  }
  inside->addLayout(grid);
  inside->addStretch(1);
}

void StatisticsWizard::layOutOptions() {
  auto* groupings = addPage(u"分组条件"_s, u"Goku"_s, u"Frame5"_s, u"商品汇总"_s);
  auto* others = addPage(u"显示方式"_s, u"Gohu"_s, u"Frame6"_s, u"商品明细"_s);
  for (std::size_t i = 0; i < Option1.size(); ++i) {
    (i < look_.groupings ? groupings : others)->addWidget(Option1.at(i));
  }
  others->addSpacing(margin);
  others->addWidget(CheckDetail);
  groupings->addStretch(1);
  others->addStretch(1);
}

void StatisticsWizard::connectControls() {
  const auto step = [this](int change) { SetStep(static_cast<qint16>(mStep + change)); };
  connect(cmdNav.at(Cancelling), &QPushButton::clicked, this, [this] { unload(); });
  connect(cmdNav.at(Back), &QPushButton::clicked, this, [step] { step(-1); });
  connect(cmdNav.at(Next), &QPushButton::clicked, this, [step] { step(1); });
  connect(cmdNav.at(Finishing), &QPushButton::clicked, this, [this] { Finish(); });
  connect(TreeView1, &TreeView::nodeClick, this, [this](TreeNode* node) { chooseCategory(*node); });
  connect(TreeView2, &TreeView::nodeClick, this, [this](TreeNode* node) { chooseGoods(*node); });
}

void StatisticsWizard::onLoad() {
  mStep = 0;
  mCanFinish = false;
  const QDate today = QDate::currentDate();
  DTPickerFrom->setValue(today);
  DTPickerTo->setValue(today);
  quietly([this] { FillCategories(); });
  quietly([this] { FillPartners(); });
  SetStep(0);
  showForm();
  TreeView1->setFocus();
}

void StatisticsWizard::SetStep(qint16 step) {
  SSTab1->setTab(step);
  // Only walking through to the end lets one finish, and going back past the groupings ends that.
  if (step == lastStep - 1) mCanFinish = false;
  if (step == lastStep) mCanFinish = true;
  mStep = step;
  // In this order the focus of a button that goes off is handed on to the one beside it.
  cmdNav.at(Finishing)->setEnabled(mCanFinish);
  cmdNav.at(Next)->setEnabled(step != lastStep);
  cmdNav.at(Back)->setEnabled(step != 0);
  letTabReachOptions();
}

/// Tab comes to the chosen option. When that stands on the other page, it must reach these all the
/// same.
void StatisticsWizard::letTabReachOptions() {
  const auto* chosen = Option1.front()->group()->checkedButton();
  const bool isHere = chosen != nullptr && SSTab1->currentWidget()->isAncestorOf(chosen);
  for (auto* option : Option1) {
    option->setFocusPolicy(!isHere || option == chosen ? Qt::StrongFocus : Qt::ClickFocus);
  }
}

void StatisticsWizard::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier) {
    cmdNav.at(Cancelling)->click();
    return;
  }
  Form::keyPressEvent(event);
}

GetData& StatisticsWizard::localStore() {
  if (store_ == nullptr) store_ = std::make_unique<GetData>(app().store);
  return *store_;
}

void StatisticsWizard::FillCategories() {
  const RecordsetPtr rows = localStore().GetXIMU(categoriesQuery(look_.side, app().gQiyeId));
  for (; !rows->atEnd(); rows->MoveNext()) {
    TreeView1->addRoot(Trim(rows->text(u"lebi"_s)), categoryImage);
  }
}

void StatisticsWizard::FillGoods(const QString& category) {
  const RecordsetPtr rows = localStore().GetXIMU(goodsQuery(look_.side, app().gQiyeId, category));
  for (; !rows->atEnd(); rows->MoveNext()) {
    TreeView2->addRoot(rows->text(u"ximu"_s), goodsImage, goodsTag);
  }
}

void StatisticsWizard::FillPartners() {
  const RecordsetPtr rows = localStore().GetXIMU(partnersQuery(look_.side, app().gQiyeId));
  for (; !rows->atEnd(); rows->MoveNext()) {
    // A partner whose number cannot be read is still listed, without one.
    qint32 id = 0;
    quietly([&] { id = toInt32(rows->text(partnerIdColumn(look_.side))); });
    comboDawe->add(rows->text(partnerNameColumn(look_.side)), id);
  }
}

void StatisticsWizard::chooseCategory(const TreeNode& node) {
  lebiClause = categoryClause(node.text());
  // What was picked among another category's goods stays in force.
  TreeView2->clearNodes();
  quietly([&] { FillGoods(node.text()); });
}

void StatisticsWizard::chooseGoods(const TreeNode& node) {
  if (node.Tag == goodsTag) ximuClause = goodsClause(node.text());
}

void StatisticsWizard::Finish() {
  quietly([this] {
    rangeClause = dateClause(look_.side, DTPickerFrom->value(), DTPickerTo->value());
    if (!comboDawe->currentText().isEmpty()) {
      // A text that was typed stands for nobody, and the failure ends the run.
      rangeClause += partnerClause(look_.side, comboDawe->itemDataAt(comboDawe->listIndex()));
    }
    showChosenReport();
  });
}

void StatisticsWizard::showChosenReport() {
  for (std::size_t i = 0; i < Option1.size(); ++i) {
    const StatisticsReport report = look_.options.at(i).report;
    const ReportLayout* layout = layoutOf(report);
    if (layout == nullptr || !Option1.at(i)->isChecked()) continue;
    mCommand =
        statisticsCommand(report, look_.side, app().gQiyeId, {rangeClause, lebiClause, ximuClause});
    showReport(*layout, localStore().GetCmdGoku(mCommand));
  }
}

}  // namespace qinghe
