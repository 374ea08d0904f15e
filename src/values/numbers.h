#pragma once

#include <QString>
#include <QStringView>

namespace qinghe {

/// The leading decimal number of a text, 0 if it has none. Blanks are skipped, also between the
/// digits ("1 2" is 12); a sign, one point and an exponent are taken.
double Val(QStringView text);

/// Whether the whole text is a number: blanks around it, a sign, ASCII digits with one point and
/// thousands commas, an exponent; nothing else. The empty text is none.
bool IsNumeric(QStringView text);

/// The text without the ASCII blanks (U+0020 only) at both ends.
QString Trim(QStringView text);

/// Rounds half to even, as every conversion to a whole number here does.
double roundHalfEven(double value);

/// Checked conversions. Texts must be wholly numeric (`IsNumeric`), otherwise `TypeMismatch`;
/// fractions round half to even; what does not fit throws `Overflow`.
qint16 toInt16(double value);
qint16 toInt16(QStringView text);
qint32 toInt32(double value);
qint32 toInt32(QStringView text);
double toDouble(QStringView text);
/// "True" and "False" without regard to case, or a number, of which only 0 is false.
bool toBoolean(QStringView text);

/// Decimal text with up to 15 significant digits, without padding: "25.5", "8", "1E+20".
QString textOf(double value);
QString textOf(qint64 value);
inline QString textOf(int value) {
  return textOf(static_cast<qint64>(value));
}
inline QString textOf(qint16 value) {
  return textOf(static_cast<qint64>(value));
}
/// "True" or "False".
QString textOf(bool value);

/// Whole-number division: both operands are rounded half to even to 32 bits, the quotient is cut
/// towards zero. A divisor that rounds to 0 and an operand beyond 32 bits throw `Failure`.
qint32 wholeDivide(double dividend, double divisor);

}  // namespace qinghe
