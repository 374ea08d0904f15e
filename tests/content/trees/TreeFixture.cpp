#include "TreeFixture.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QTest>

#include "portal/url_encode.h"

namespace qinghe {

using namespace Qt::StringLiterals;

TreeScreen& TreeFixture::screen() {
  auto& form = open();
  QApplication::setActiveWindow(form.window());
  return form;
}

void TreeFixture::leave() {
  ASSERT_TRUE(screen().unload());
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void TreeFixture::press(const QString& key) {
  QAction* action = screen().Toolbar1->button(key);
  ASSERT_NE(action, nullptr);
  ASSERT_TRUE(action->isEnabled()) << key.toStdString();
  QTest::mouseClick(screen().Toolbar1->widgetForAction(action), Qt::LeftButton);
}

QStringList TreeFixture::allowed() {
  QStringList keys;
  for (const QAction* action : screen().Toolbar1->actions()) {
    if (action->isEnabled() && action->objectName() != u"Exit") keys << action->objectName();
  }
  return keys;
}

void TreeFixture::clickAt(const QPoint& position) {
  QTest::mouseClick(tree().viewport(), Qt::LeftButton, {}, position);
}

void TreeFixture::typeLabel(const QString& label) {
  tree().setFocus();
  QTest::keyClick(&tree(), Qt::Key_F2);
  for (auto* editor : tree().findChildren<QLineEdit*>(u"TreeView1.editor"_s)) {
    if (!editor->isVisible()) continue;  // an earlier one on its way out
    editor->selectAll();
    editor->insert(label);
    return;
  }
  FAIL() << "no label is being edited";
}

QStringList TreeFixture::below(const TreeNode* node) {
  QStringList rows;
  for (int index = 0; index < node->childCount(); ++index) {
    const TreeNode* child = node->childNode(index);
    rows.append(child->Key + u"|"_s + child->text() + u"|"_s + child->Tag);
  }
  return rows;
}

TreeNode* TreeFixture::childOf(const TreeNode* node, const QString& text) {
  for (int index = 0; index < node->childCount(); ++index) {
    if (node->childNode(index)->text() == text) return node->childNode(index);
  }
  return nullptr;
}

QString TreeFixture::rowsTarget(const Fields& fields) {
  return u"/_vti_product/_vti_detail_field_s.asp"_s + query(fields);
}

QString TreeFixture::addTarget(const Fields& fields) {
  return u"/_vti_product/_vti_add.asp"_s + query(fields);
}

QString TreeFixture::query(const Fields& fields) {
  QString result;
  for (const auto& [name, value] : fields) {
    result += (result.isEmpty() ? u"?"_s : u"&"_s) + name + u"="_s + UrlEncodeField(value);
  }
  return result;
}

}  // namespace qinghe
