#include "values/numbers.h"

#include <QByteArray>
#include <algorithm>
#include <cmath>
#include <limits>

#include "values/failure.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr int significantDigits = 15;
constexpr int divisionByZeroNumber = 11;

bool isDigit(QChar c) {
  return c >= u'0' && c <= u'9';
}

// A number beyond a double counts as the largest one, so that checked conversions still refuse it.
double parseAscii(const QByteArray& ascii) {
  const double value = QString::fromLatin1(ascii).toDouble();
  if (!std::isinf(value)) return value;
  return std::copysign(std::numeric_limits<double>::max(), value);
}

// Walks a text without its blanks, so that "1 2" is one number.
class BlanklessReader {
 public:
  explicit BlanklessReader(QStringView text) : text_(text) { skip(); }
  QChar peek() const { return at_ < text_.size() ? text_[at_] : QChar(); }
  void take(QByteArray& into) {
    into.append(peek().toLatin1());
    ++at_;
    skip();
  }
  void takeDigits(QByteArray& into) {
    while (isDigit(peek())) take(into);
  }
  void takeSign(QByteArray& into) {
    if (peek() == u'+' || peek() == u'-') take(into);
  }

 private:
  void skip() {
    while (at_ < text_.size() && text_[at_] == u' ') ++at_;
  }
  QStringView text_;
  qsizetype at_ = 0;
};

// The digits of a whole part, with commas only where they part thousands. -1 when it is none.
qsizetype wholePartLength(QStringView text) {
  qsizetype at = 0;
  qsizetype sinceComma = 0;
  bool commas = false;
  while (at < text.size() && (isDigit(text[at]) || text[at] == u',')) {
    if (text[at] != u',') {
      ++sinceComma;
    } else {
      const bool placed = commas ? sinceComma == 3 : sinceComma >= 1 && sinceComma <= 3;
      if (!placed) return -1;
      commas = true;
      sinceComma = 0;
    }
    ++at;
  }
  return commas && sinceComma != 3 ? -1 : at;
}

qsizetype digitsLength(QStringView text) {
  const auto end = std::ranges::find_if_not(text, isDigit);
  return end - text.begin();
}

QStringView withoutBlanks(QStringView text) {
  while (text.startsWith(u' ')) text = text.sliced(1);
  while (text.endsWith(u' ')) text.chop(1);
  return text;
}

bool isExponent(QStringView text) {
  if (text.isEmpty() || text[0].toLower() != u'e') return false;
  text = text.sliced(1);
  if (text.startsWith(u'+') || text.startsWith(u'-')) text = text.sliced(1);
  return !text.isEmpty() && digitsLength(text) == text.size();
}

double wholeNumber(double value, double least, double most, int bits) {
  const double rounded = roundHalfEven(value);
  if (!(rounded >= least && rounded <= most)) {
    throw Overflow(u"%1 (%2)"_s.arg(textOf(value)).arg(bits));
  }
  return rounded;
}

}  // namespace

double Val(QStringView text) {
  BlanklessReader reader(text);
  QByteArray digits;
  reader.takeSign(digits);
  const qsizetype signLength = digits.size();
  reader.takeDigits(digits);
  qsizetype count = digits.size() - signLength;
  if (reader.peek() == u'.') {
    reader.take(digits);
    const qsizetype before = digits.size();
    reader.takeDigits(digits);
    count += digits.size() - before;
  }
  if (count == 0) return 0;
  if (reader.peek().toLower() == u'e') {
    QByteArray exponent;
    reader.take(exponent);
    reader.takeSign(exponent);
    const qsizetype before = exponent.size();
    reader.takeDigits(exponent);
    if (exponent.size() > before) digits.append(exponent);
  }
  return parseAscii(digits);
}

bool IsNumeric(QStringView text) {
  text = withoutBlanks(text);
  if (text.startsWith(u'+') || text.startsWith(u'-')) text = text.sliced(1);
  const qsizetype whole = wholePartLength(text);
  if (whole < 0) return false;
  text = text.sliced(whole);
  qsizetype decimals = 0;
  if (text.startsWith(u'.')) {
    decimals = digitsLength(text.sliced(1));
    text = text.sliced(1 + decimals);
  }
  if (whole + decimals == 0) return false;
  return text.isEmpty() || isExponent(text);
}

QString Trim(QStringView text) {
  return withoutBlanks(text).toString();
}

double roundHalfEven(double value) {
  // std::nearbyint follows the rounding mode, which is half-to-even unless somebody changes it;
  // std::remainder does not depend on it.
  return value - std::remainder(value, 1.0);
}

qint16 toInt16(double value) {
  using Limits = std::numeric_limits<qint16>;
  return static_cast<qint16>(wholeNumber(value, Limits::min(), Limits::max(), 16));
}

qint16 toInt16(QStringView text) {
  return toInt16(toDouble(text));
}

qint32 toInt32(double value) {
  using Limits = std::numeric_limits<qint32>;
  return static_cast<qint32>(wholeNumber(value, Limits::min(), Limits::max(), 32));
}

qint32 toInt32(QStringView text) {
  return toInt32(toDouble(text));
}

double toDouble(QStringView text) {
  if (!IsNumeric(text)) throw TypeMismatch(text.left(40).toString());
  QByteArray ascii = withoutBlanks(text).toLatin1();
  ascii.replace(",", "");
  return parseAscii(ascii);
}

bool toBoolean(QStringView text) {
  const QStringView word = withoutBlanks(text);
  if (word.compare(u"True", Qt::CaseInsensitive) == 0) return true;
  if (word.compare(u"False", Qt::CaseInsensitive) == 0) return false;
  return toDouble(text) != 0;
}

QString textOf(double value) {
  if (value == 0) return u"0"_s;
  if (!std::isfinite(value)) return QString::number(value);
  // The shortest digits of at most 15, as d.ddddE±x.
  const QByteArray scientific = QByteArray::number(value, 'e', significantDigits - 1);
  const qsizetype mark = scientific.indexOf('e');
  const int exponent = scientific.sliced(mark + 1).toInt();
  QByteArray digits = scientific.first(mark);
  const bool negative = digits.startsWith('-');
  if (negative) digits.remove(0, 1);
  digits.remove(1, 1);  // the point
  while (digits.size() > 1 && digits.endsWith('0')) digits.chop(1);

  const QString sign = negative ? u"-"_s : QString();
  const qsizetype decimals = digits.size() - 1 - exponent;
  if (exponent >= significantDigits || decimals > significantDigits) {
    QByteArray mantissa = digits;
    if (mantissa.size() > 1) mantissa.insert(1, '.');
    return sign + QString::fromLatin1(mantissa) +
           u"E%1%2"_s.arg(QChar(exponent < 0 ? u'-' : u'+'))
               .arg(std::abs(exponent), 2, 10, QChar(u'0'));
  }
  if (decimals <= 0) digits.append(-decimals, '0');
  if (exponent < 0) digits.prepend(QByteArray(-exponent, '0'));
  if (decimals > 0) digits.insert(digits.size() - decimals, '.');
  return sign + QString::fromLatin1(digits);
}

QString textOf(qint64 value) {
  return QString::number(value);
}

QString textOf(bool value) {
  return value ? u"True"_s : u"False"_s;
}

qint32 wholeDivide(double dividend, double divisor) {
  const qint32 whole = toInt32(dividend);
  const qint32 by = toInt32(divisor);
  if (by == 0) throw Failure(divisionByZeroNumber, u"除数为零"_s);
  return toInt32(static_cast<double>(qint64{whole} / by));
}

}  // namespace qinghe
