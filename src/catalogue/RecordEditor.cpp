#include "catalogue/RecordEditor.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "forms/Icons.h"
#include "forms/Prompts.h"
#include "forms/Splitter.h"
#include "forms/TabControl.h"
#include "shell/AppState.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr int firstWidth = 860;
constexpr int firstHeight = 560;
constexpr int firstBarPosition = 300;

QString member(const QString& array, int index) {
  return u"%1(%2)"_s.arg(array).arg(index);
}

}  // namespace

RecordEditor::RecordEditor(const EditorLook& look)
    : Form(Kind::Child, look.form, look.caption),
      Toolbar1(new Toolbar(u"Toolbar1"_s, this)),
      ListView1(new ListView(u"ListView1"_s, this)),
      StatusBar1(new StatusBar(u"StatusBar1"_s, this)),
      look_(look) {
  for (const EditorButton& button : look_.buttons) {
    Toolbar1->addButton(button.key, button.caption, button.toolTip);
  }
  panes_ = new SplitPane(buildListPane(), buildDetailPane(), this);
  panes_->setPosition(firstBarPosition);

  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(0, 0, 0, 0);
  all->setSpacing(0);
  all->addWidget(Toolbar1);
  all->addWidget(panes_, 1);
  all->addWidget(StatusBar1);
  resize(firstWidth, firstHeight);

  connect(Toolbar1, &Toolbar::buttonClick, this, &RecordEditor::buttonClick);
  connect(ListView1, &ListView::itemClick, this, [this](ListItem* item) { itemClick(*item); });
  connect(ListView1, &ListView::itemCheck, this, [this](ListItem* item) { itemCheck(*item); });
}

QWidget* RecordEditor::buildListPane() {
  auto* pane = new QWidget(this);
  ListView1->setCheckBoxes(true);
  ListView1->setClickKeys({Qt::Key_Return, Qt::Key_Enter});
  ListView1->setAccessibleName(look_.listColumn);
  listPane_ = new QVBoxLayout(pane);
  listPane_->setContentsMargins(6, 6, 2, 6);
  if (look_.searchBox) {
    auto* search = new TextBox(u"txtSelect"_s, TextBox::Lines::One, pane);
    search->editor()->setAccessibleName(u"查找"_s);
    qobject_cast<QLineEdit*>(search->editor())->setPlaceholderText(u"查找"_s);
    listPane_->addWidget(search);
  }
  listPane_->addWidget(ListView1, 1);
  return pane;
}

void RecordEditor::addBelowList(QWidget* widget) {
  listPane_->addWidget(widget);
}

QWidget* RecordEditor::buildDetailPane() {
  if (look_.tabs.isEmpty()) return buildFields(0, new QWidget(this));
  auto* pane = new QWidget(this);
  auto* all = new QVBoxLayout(pane);
  all->setContentsMargins(2, 6, 6, 6);
  all->addWidget(buildTabs());
  return pane;
}

QWidget* RecordEditor::buildTabs() {
  SSTab1 = new TabControl(u"SSTab1"_s, TabControl::WalkedBy::User, this);
  for (int tab = 0; tab < look_.tabs.size(); ++tab) {
    buildFields(tab, SSTab1->addPage(look_.tabs[tab]));
  }
  return SSTab1;
}

QWidget* RecordEditor::buildFields(int tab, QWidget* pane) {
  auto* grid = new QGridLayout(pane);
  grid->setContentsMargins(10, 6, 12, 10);
  grid->setHorizontalSpacing(10);
  grid->setVerticalSpacing(8);
  grid->setColumnStretch(1, 1);
  bool lines = false;  // alone they stand at the top; a long text takes what room is left
  bool memo = false;
  for (const EditorField& field : look_.fields) {
    if (field.tab != tab) continue;
    addField(*grid, field);
    (field.memo ? memo : lines) = true;
  }
  if (lines && !memo) grid->setRowStretch(grid->rowCount(), 1);
  return pane;
}

void RecordEditor::addField(QGridLayout& grid, const EditorField& field) {
  const auto lines = field.memo ? TextBox::Lines::Many : TextBox::Lines::One;
  auto* box = new TextBox(member(u"txtFields"_s, field.index), lines, this);
  fields_[field.index] = box;
  box->editor()->setAccessibleName(field.label.isEmpty() ? field.accessibleName
                                                         : QString(field.label).remove(u' '));
  box->setReadOnly(field.industry);
  if (field.numeric) box->onValidate = [this, box] { return validateNumber(*box); };
  connect(box, &TextBox::changed, this, [this] { mDirty = true; });

  const int row = grid.rowCount();
  addLabel(grid, row, field);
  const bool whole = field.label.isEmpty() && field.memo && !look_.tabs.isEmpty();
  grid.addWidget(box, row, whole ? 0 : 1, 1, whole ? 3 : 1);
  if (field.memo) grid.setRowStretch(row, 1);
  addCommand(grid, row, field);
}

void RecordEditor::addLabel(QGridLayout& grid, int row, const EditorField& field) {
  if (field.label.isEmpty()) return;
  auto* label = new QLabel(field.label, this);
  label->setObjectName(field.labelName.isEmpty() ? member(u"LabelXM"_s, field.index)
                                                 : field.labelName);
  label->setTextFormat(Qt::PlainText);
  label->setBuddy(txtFields(field.index)->editor());
  grid.addWidget(label, row, 0, field.memo ? Qt::AlignTop : Qt::AlignVCenter);
}

void RecordEditor::addCommand(QGridLayout& grid, int row, const EditorField& field) {
  if (field.command.isEmpty()) return;
  auto* button = new QPushButton(field.commandCaption, this);
  button->setObjectName(field.command);
  button->setAutoDefault(false);
  if (field.commandCaption.isEmpty()) {
    button->setIcon(iconFor(u"Next"_s));
    button->setMaximumWidth(button->sizeHint().height() + 12);
  }
  const QString what = txtFields(field.index)->editor()->accessibleName();
  button->setAccessibleName(u"选择"_s + what);
  button->setToolTip(button->accessibleName());
  connect(button, &QPushButton::clicked, this,
          [this, name = field.command] { commandClick(name); });
  grid.addWidget(button, row, 2);
  commands_.append(button);
}

QPushButton* RecordEditor::command(const QString& name) const {
  for (QPushButton* button : commands_) {
    if (button->objectName() == name) return button;
  }
  return nullptr;
}

void RecordEditor::setCommandsEnabled(bool enabled) {
  for (QPushButton* button : commands_) button->setEnabled(enabled);
}

TextBox* RecordEditor::txtFields(int index) const {
  const auto found = fields_.find(index);
  return found == fields_.end() ? nullptr : found->second;
}

bool RecordEditor::validateNumber(TextBox& box) {
  if (IsNumeric(box.text())) return true;
  prompts().ask(this, {u"必须是数值,请重新输入"_s});
  return false;
}

void RecordEditor::BuildColumns() {
  ListView1->addColumn(look_.listColumn, firstBarPosition);
  ListView1->setFillingColumn(0, look_.listColumnInset);
}

void RecordEditor::UpdateToolbar() {
  Toolbar1->setButtonEnabled(u"Add"_s, AddAllowed);
  Toolbar1->setButtonEnabled(u"Save"_s, SaveAllowed);
}

void RecordEditor::addRow() {
  ListItem* item = ListView1->addItem({}, look_.newRowText);
  item->setChecked(true);
  ListView1->setSelectedItem(item);
  clearFields();
  setFieldsAfterAdd();
}

void RecordEditor::clearFields() {
  for (const EditorField& field : look_.fields) {
    if (!field.keptByAdd) txtFields(field.index)->setText({});
  }
}

void RecordEditor::setFieldsAfterAdd() {
  for (const EditorField& field : look_.fields) {
    if (field.industry || field.industryAfterAdd) {
      txtFields(field.index)->setText(app().gHayeName);
    } else if (field.afterAdd) {
      txtFields(field.index)->setText(*field.afterAdd);
    }
  }
}

void RecordEditor::showIndustry() {
  for (const EditorField& field : look_.fields) {
    if (field.industry) txtFields(field.index)->setText(app().gHayeName);
  }
}

double RecordEditor::idOf(const ListItem& row) {
  return Val(row.key());
}

QString RecordEditor::portalValue(const SavedValue& value, const ListItem& row) const {
  switch (value.from) {
    case ValueFrom::OwnerId:
      return textOf(app().gQiyeId);
    case ValueFrom::OwnerName:
      return app().gUserName;
    case ValueFrom::TagNumber:
      return textOf(Val(txtFields(value.field)->Tag));
    case ValueFrom::Trimmed:
      return Trim(fieldText(value.field));
    case ValueFrom::Typed:
      return fieldText(value.field);
    case ValueFrom::Checked:
      return textOf(row.isChecked());
  }
  return {};
}

QVariant RecordEditor::localValue(const SavedValue& value, const ListItem& row) const {
  switch (value.from) {
    case ValueFrom::OwnerId:
      return app().gLocalId;
    case ValueFrom::OwnerName:
      return app().gUserName;
    case ValueFrom::TagNumber:
      return Val(txtFields(value.field)->Tag);
    case ValueFrom::Trimmed:
      return Trim(fieldText(value.field));
    case ValueFrom::Typed:
      return fieldText(value.field);
    case ValueFrom::Checked:
      return row.isChecked();
  }
  return {};
}

GetData& RecordEditor::localStore() {
  if (localStore_ == nullptr) localStore_ = std::make_unique<GetData>(app().store);
  return *localStore_;
}

Answer RecordEditor::askToSave() {
  return prompts().ask(this,
                       {u"数据尚未保存，是否保存"_s, {}, Buttons::YesNoCancel, Mark::Question});
}

void RecordEditor::reportSave(bool saved, const QString& success, const QString& failure) {
  if (saved) mDirty = false;
  StatusBar1->setText(saved ? success : failure);
}

void RecordEditor::onQueryUnload(Cancel& cancel) {
  if (!mDirty) return;
  switch (askToSave()) {
    case Answer::Yes:
      reportSave(saveOnClose(), u"保存成功！！！"_s, u"保存失败！！！"_s);
      break;
    case Answer::Cancel:
      cancel.value = true;
      break;
    default:
      break;
  }
}

}  // namespace qinghe
