#include "forms/LogBox.h"

#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

namespace qinghe {

namespace {

/// A line costs much more memory than its characters, so empty lines without end are cut earlier.
constexpr int mostLines = 200'000;

QPlainTextEdit& memoOf(const TextBox& box) {
  return *qobject_cast<QPlainTextEdit*>(box.editor());
}

}  // namespace

LogBox::LogBox(const QString& name, qsizetype limit, QWidget* parent)
    : TextBox(name, Lines::Many, parent), limit_(limit) {
  setReadOnly(true);
  memoOf(*this).setUndoRedoEnabled(false);
}

void LogBox::prepend(const QString& text) {
  if (text.isEmpty()) return;
  {
    // The base compares whole texts to tell changes, which a long log cannot afford.
    const QSignalBlocker quiet(memoOf(*this));
    QTextCursor top(memoOf(*this).document());
    top.beginEditBlock();
    top.insertText(text.left(limit_));
    trim();
    top.endEditBlock();
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
  rest.setPosition(kept);
  rest.movePosition(QTextCursor::End, QTextCursor::KeepAnchor);
  rest.removeSelectedText();
}

}  // namespace qinghe
