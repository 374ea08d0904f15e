#include "forms/LogBox.h"

#include <QPlainTextEdit>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

namespace qinghe {

namespace {

/// A line costs much more memory than its characters, so empty lines without end are cut earlier.
constexpr int mostLines = 200'000;

constexpr int frameInterval = 16;  // milliseconds

QPlainTextEdit& memoOf(const TextBox& box) {
  return *qobject_cast<QPlainTextEdit*>(box.editor());
}

}  // namespace

LogBox::LogBox(const QString& name, qsizetype limit, QWidget* parent)
    : TextBox(name, Lines::Many, parent), limit_(limit) {
  setReadOnly(true);
  memoOf(*this).setUndoRedoEnabled(false);
  painting_.setSingleShot(true);
  painting_.setInterval(frameInterval);
  connect(&painting_, &QTimer::timeout, this, [this] { memoOf(*this).setUpdatesEnabled(true); });
}

void LogBox::prepend(const QString& text) {
  if (text.isEmpty()) return;
  holdPainting();
  {
    // The base compares whole texts to tell changes, which a long log cannot afford.
    const QSignalBlocker quiet(memoOf(*this));
    QTextCursor top(memoOf(*this).document());
    // Two edits and not one: everything between two places that change in one is laid out anew. And
    // not without: at each change a cursor would have its line laid out.
    top.beginEditBlock();
    top.insertText(text.left(limit_));
    top.endEditBlock();
    trim();
    inserted_ += qMin(text.size(), limit_);
    if (inserted_ > limit_) rebuild();
  }
  emit changed();
}

void LogBox::trim() {
  auto* document = memoOf(*this).document();
  const int length = document->characterCount() - 1;
  int kept = static_cast<int>(qMin<qsizetype>(length, limit_));
  if (document->blockCount() > mostLines) {
    kept = qMin(kept, document->findBlockByNumber(mostLines).position() - 1);
  }
  if (kept == length) return;
  if (document->characterAt(kept).isLowSurrogate()) --kept;
  QTextCursor rest(document);
  rest.beginEditBlock();
  rest.setPosition(kept);
  rest.setPosition(length, QTextCursor::KeepAnchor);
  rest.removeSelectedText();
  rest.endEditBlock();
}

/// A new text on top moves all the others and the scroll bar, so each would have the whole box
/// painted anew.
void LogBox::holdPainting() {
  if (painting_.isActive()) return;
  memoOf(*this).setUpdatesEnabled(false);
  painting_.start();
}

/// A document keeps every character that was ever inserted, the removed ones too, until all of its
/// text is set anew. Done once for each full log that has come, this costs little.
void LogBox::rebuild() {
  auto& memo = memoOf(*this);
  const int scrolled = memo.verticalScrollBar()->value();
  memo.setPlainText(memo.document()->toRawText());
  memo.verticalScrollBar()->setValue(scrolled);
  inserted_ = 0;
}

}  // namespace qinghe
