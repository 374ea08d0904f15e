#include "account/registration/FrmRegister_QY.h"

#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "account/LoginAnswer.h"
#include "account/registration/frmGetAREA.h"
#include "account/registration/frmGetHAYE.h"
#include "account/registration/frmGetSHEN.h"
#include "forms/Prompts.h"
#include "portal/RequestBuilder.h"
#include "shell/AppState.h"
#include "shell/PortalMethod.h"
#include "shell/frmMsgBox.h"
#include "shell/ras.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

enum Field0 { Number, Phone, Password, Country = 7, Province, City, Industry };

constexpr int watchedBoxes = 3;
constexpr int firstWidth = 580;
constexpr int firstHeight = 540;
constexpr int margin = 12;

QString arrayName(RecordArray array) {
  switch (array) {
    case RecordArray::TxtField0:
      return u"TxtField0"_s;
    case RecordArray::TxtField1:
      return u"TxtField1"_s;
    case RecordArray::TxtField3:
      return u"TxtField3"_s;
  }
  return {};
}

QString ownRow() {
  return u"id=%1"_s.arg(app().gQiyeId);
}

QPushButton* button(const QString& name, const QString& caption, const QString& accessibleName) {
  auto* made = new QPushButton(caption);
  made->setObjectName(name);
  made->setAccessibleName(accessibleName);
  made->setToolTip(accessibleName);
  return made;
}

void notify(const QString& line1, const QString& line2 = {}, const QString& line3 = {}) {
  showNotice(line1, line2, line3);
  CheckConnection();
}

}  // namespace

FrmRegister_QY::FrmRegister_QY()
    : Form(Kind::Child, u"FrmRegister_QY"_s, u"用户信息"_s),
      Toolbar1(new Toolbar(u"Toolbar1"_s, this)),
      SSTab1(new TabControl(u"SSTab1"_s, TabControl::WalkedBy::User, this)),
      StatusBar1(new StatusBar(u"StatusBar1"_s, this)),
      Command1(button(u"Command1"_s, u"选择图片…"_s, u"选择图片"_s)),
      Command2(button(u"Command2"_s, u"选择…"_s, u"选择行业"_s)),
      Command3(button(u"Command3"_s, u"中国"_s, u"填入中国"_s)),
      Command4(button(u"Command4"_s, u"选择…"_s, u"选择省份"_s)),
      Command5(button(u"Command5"_s, u"选择…"_s, u"选择城市"_s)),
      ImagePICT(new PictureBox(u"ImagePICT"_s)),
      WebBrowserPICT(new WebBrowser(u"WebBrowserPICT"_s)) {
  Toolbar1->addButton(u"Save"_s, u"保存"_s, u"把注册信息保存到网上"_s);
  Toolbar1->addButton(u"Exit"_s, u"退出"_s, u"关闭本窗口"_s);
  WebBrowserPICT->setStaysOnHost(true);
  makeBoxes();
  layOut();
  connectControls();
}

void FrmRegister_QY::makeBoxes() {
  for (const RecordBox& one : recordBoxes()) {
    const bool text = one.array == RecordArray::TxtField3;
    auto* made = new TextBox(u"%1(%2)"_s.arg(arrayName(one.array)).arg(one.index),
                             text ? TextBox::Lines::Many : TextBox::Lines::One, this);
    made->editor()->setAccessibleName(QString(one.caption).remove(u' ').remove(u'*'));
    connect(made, &TextBox::changed, this, [this] { changed_ = true; });
    if (one.array == RecordArray::TxtField1 && one.index < watchedBoxes) watchTyping(*made);
    boxes_[{one.array, one.index}] = made;
  }
  TxtField0(Number)->setReadOnly(true);  // the portal's to give
  TxtField0(Password)->setPasswordMode();
}

void FrmRegister_QY::watchTyping(TextBox& box) {
  connect(&box, &TextBox::gotFocus, this, [this, &box] {
    typed_ = true;
    beforeTyping_ = box.text();
  });
  connect(&box, &TextBox::changed, this, [this, &box] {
    if (typed_ && box.text() != beforeTyping_) box.Tag = u"0"_s;
  });
}

TextBox* FrmRegister_QY::box(RecordArray array, int index) const {
  const auto found = boxes_.find({array, index});
  return found == boxes_.end() ? nullptr : found->second;
}

void FrmRegister_QY::layOut() {
  auto* must = addGrid(u"基本资料"_s, RecordArray::TxtField0);
  for (const auto& [row, picker] : {std::pair(Country, Command3), std::pair(Province, Command4),
                                    std::pair(City, Command5), std::pair(Industry, Command2)}) {
    must->addWidget(picker, row, 2);
    setTabOrder(TxtField0(row)->editor(), picker);
  }
  addGrid(u"其它资料"_s, RecordArray::TxtField1);
  addText(0);
  addText(1);
  addPictures();

  auto* inside = new QVBoxLayout;
  inside->setContentsMargins(margin, margin, margin, margin);
  inside->addWidget(SSTab1);
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(0, 0, 0, 0);
  all->setSpacing(0);
  all->addWidget(Toolbar1);
  all->addLayout(inside, 1);
  all->addWidget(StatusBar1);
  resize(firstWidth, firstHeight);
}

QGridLayout* FrmRegister_QY::addGrid(const QString& tab, RecordArray array) {
  auto* grid = new QGridLayout(SSTab1->addPage(tab));
  grid->setContentsMargins(margin, margin, margin, margin);
  grid->setHorizontalSpacing(10);
  grid->setVerticalSpacing(8);
  grid->setColumnStretch(1, 1);
  for (const RecordBox& one : recordBoxes()) {
    if (one.array != array) continue;
    auto* label = new QLabel(one.caption);
    label->setTextFormat(Qt::PlainText);
    label->setBuddy(box(array, one.index)->editor());
    grid->addWidget(label, one.index, 0);
    grid->addWidget(box(array, one.index), one.index, 1);
  }
  grid->setRowStretch(grid->rowCount(), 1);
  return grid;
}

void FrmRegister_QY::addText(int index) {
  auto* text = TxtField3(index);
  auto* page = new QVBoxLayout(SSTab1->addPage(text->editor()->accessibleName()));
  page->setContentsMargins(margin, margin, margin, margin);
  page->addWidget(text);
}

void FrmRegister_QY::addPictures() {
  auto* page = new QGridLayout(SSTab1->addPage(u"图片"_s));
  page->setContentsMargins(margin, margin, margin, margin);
  page->setVerticalSpacing(8);
  page->addWidget(new QLabel(u"网上图片"_s), 0, 0);
  page->addWidget(WebBrowserPICT, 1, 0, 1, 2);
  page->addWidget(new QLabel(u"本机图片"_s), 2, 0);
  page->addWidget(ImagePICT, 3, 0);
  page->addWidget(Command1, 3, 1, Qt::AlignTop);
  page->setRowStretch(1, 3);
  page->setRowStretch(3, 2);
  page->setColumnStretch(0, 1);
}

void FrmRegister_QY::connectControls() {
  connect(Toolbar1, &Toolbar::buttonClick, this, &FrmRegister_QY::buttonClick);
  connect(Command1, &QPushButton::clicked, this, &FrmRegister_QY::pickPicture);
  connect(Command2, &QPushButton::clicked, this, [this] {
    if (CheckConnection()) pick(Industry, defaultInstance<frmGetHAYE>().choose());
  });
  connect(Command3, &QPushButton::clicked, this, [this] {
    if (CheckConnection()) pick(Country, {u"1"_s, u"中国"_s});
  });
  connect(Command4, &QPushButton::clicked, this, [this] {
    if (CheckConnection()) pick(Province, defaultInstance<frmGetSHEN>().choose());
  });
  connect(Command5, &QPushButton::clicked, this, [this] {
    if (CheckConnection()) pick(City, defaultInstance<frmGetAREA>().choose());
  });
}

void FrmRegister_QY::pick(int field, const Choice& choice) {
  if (choice.id.isEmpty() || choice.name.isEmpty()) return;
  typed_ = false;
  TxtField0(field)->Tag = choice.id;
  TxtField0(field)->setText(choice.name);
}

void FrmRegister_QY::pickPicture() {
  if (!CheckConnection()) return;
  const QFileInfo before(ImagePICT->Tag);
  const auto path =
      prompts().openFile(this, {.title = u"选择图片"_s,
                                .directory = ImagePICT->Tag.isEmpty() ? QString() : before.path(),
                                .fileName = before.fileName(),
                                .filter = u"Access (*.jpg)"_s});
  if (!path) return;
  ImagePICT->Tag = *path;
  ImagePICT->load(*path);
}

void FrmRegister_QY::onLoad() {
  changed_ = false;
  WebBrowserPICT->Navigate(u"about:blank"_s);
  const bool online = CheckConnection();
  Toolbar1->setButtonEnabled(u"Save"_s, online);
  if (!online) {
    notify(u"网络连接失败"_s);
  } else {
    if (app().gQiyeId != 0) {
      ReadRow();
      TxtField0(Phone)->setReadOnly(true);
    }
    app().gShenId = Val(TxtField0(Province)->Tag);
  }
  showForm();
  // The portal's own number stands first, and the telephone is fixed once there is one.
  TxtField0(TxtField0(Phone)->isReadOnly() ? Password : Phone)->setFocus();
  changed_ = false;
}

bool FrmRegister_QY::ReadRow() {
  const QString url = RequestBuilder(app().gWebServer, paths::loginRows)
                          .encoded(u"STABLE"_s, u"QYXX"_s)
                          .encoded(u"STRDATA"_s, recordFieldList())
                          .encoded(u"STOTHER"_s, ownRow())
                          .url();
  const bool read = readPortal(url, EmptyAnswer::IsNoRows, [this](GetHtml& html) {
    html.GetRowItem();  // the id, which is known
    for (const RecordValue& cell : recordCells()) {
      auto* shown = box(cell.array, cell.index);
      if (cell.isId) {
        shown->Tag = html.GetRowItem();
      } else {
        shown->setText(html.GetRowItem());
      }
    }
    return true;
  });
  if (!read) return false;
  if (app().gViewPict == 1) {
    WebBrowserPICT->Navigate(RequestBuilder(app().gWebServer, paths::loginImage)
                                 .raw(u"id"_s, textOf(app().gQiyeId))
                                 .url());
  }
  return true;
}

void FrmRegister_QY::buttonClick(const QString& key) {
  if (!CheckConnection()) return;
  if (key == u"Save") {
    save();
  } else if (key == u"Exit") {
    unload();
  }
}

void FrmRegister_QY::save() {
  for (int index = Phone; index <= Industry; ++index) {
    if (!TxtField0(index)->text().isEmpty()) continue;
    prompts().ask(this, {u"请填写注册信息"_s});
    SSTab1->setTab(0);
    TxtField0(index)->setFocus();
    return;
  }
  if (changed_ && SaveRegistration()) changed_ = false;
}

bool FrmRegister_QY::SaveRegistration() {
  // The form may be closed while a text waits for the other or the notice stands; its fields are
  // still to be written into the local row then.
  const FormRegistry::Hold hold(app().forms.registry);
  const bool saved = SavePortal();
  if (saved) {
    SaveIntroduction();
    SaveUserText();
    notify(u"网络注册/修改成功！！！"_s, u"用户编号："_s + app().gUserNo,
           u"用户名称："_s + app().gUserName);
  } else {
    notify(u"网络注册/修改失败！！！"_s, u"注册名称或编号失败"_s);
  }
  if (app().gQiyeId != 0) SaveLocal();
  return saved;
}

bool FrmRegister_QY::SavePortal() {
  RequestBuilder request(app().gWebServer, paths::addLogin);
  request.raw(u"stable"_s, u"qyxx"_s).encoded(u"stid"_s, ownRow());
  for (const RecordValue& value : recordParameters()) {
    const auto* shown = box(value.array, value.index);
    request.encoded(value.name, value.isId ? textOf(Val(shown->Tag)) : shown->text());
  }
  bool answered = false;
  const bool taken = readPortal(request.url(), EmptyAnswer::IsFailure, [&](GetHtml& html) {
    const qint16 before = app().gQiyeId;
    answered = takeLoginRow(html, app());
    // Unlike at a login, a refusal says nothing about who the user is.
    if (!answered) app().gQiyeId = before;
    return answered;
  });
  if (!taken || !answered) return false;
  TxtField0(Number)->setText(app().gUserNo);
  TxtField0(Phone)->setReadOnly(true);
  return true;
}

bool FrmRegister_QY::postText(const QString& name, const QString& text) {
  RequestBuilder request(app().gWebServer, paths::updateLogin);
  request.encoded(u"stable"_s, u"qyxx"_s).encoded(u"sid"_s, ownRow()).encoded(name, text);
  return postToPortal(request.page(), request.body());
}

bool FrmRegister_QY::SaveIntroduction() {
  return postText(u"JISH"_s, TxtField3(0)->text());
}

bool FrmRegister_QY::SaveUserText() {
  return postText(u"YHLY"_s, TxtField3(1)->text());
}

bool FrmRegister_QY::SaveLocal() {
  try {
    GetData store(app().store);
    const RecordsetPtr row =
        store.GetQYXX(u"SELECT *  FROM QYXX WHERE r_id="_s + textOf(app().gQiyeId));
    if (row->atEnd()) row->AddNew();
    row->setValue(u"R_ID"_s, app().gQiyeId);
    row->setValue(u"user_no"_s, app().gUserNo);
    row->setValue(u"user_name"_s, TxtField0(Phone)->text());
    row->setValue(u"user_pass"_s, TxtField0(Password)->text());
    row->Update();
    return true;
  } catch (const Failure&) {
    return false;
  }
}

void FrmRegister_QY::onQueryUnload(Cancel& cancel) {
  if (!changed_) return;
  switch (prompts().ask(this,
                        {u"数据尚未保存，是否保存"_s, {}, Buttons::YesNoCancel, Mark::Question})) {
    case Answer::Yes:
      StatusBar1->setText(SaveRegistration() ? u"用户信息保存成功！！！"_s
                                             : u"用户信息保存失败！！！"_s);
      break;
    case Answer::Cancel:
      cancel.value = true;
      break;
    default:
      break;
  }
}

void FrmRegister_QY::onUnload() {
  qinghe::unload<frmGetSHEN>();
  qinghe::unload<frmGetAREA>();
  qinghe::unload<frmGetHAYE>();
}

}  // namespace qinghe
