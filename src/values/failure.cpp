#include "values/failure.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {
// The numbers are those that the platform's runtime has always printed for these failures.
constexpr int invalidCallNumber = 5;
constexpr int overflowNumber = 6;
constexpr int typeMismatchNumber = 13;
}  // namespace

Failure::Failure(int number, const QString& description)
    : std::runtime_error(description.toStdString()), number_(number), description_(description) {}

Overflow::Overflow(const QString& what) : Failure(overflowNumber, u"数值溢出："_s + what) {}

TypeMismatch::TypeMismatch(const QString& what)
    : Failure(typeMismatchNumber, u"类型不匹配："_s + what) {}

InvalidCall::InvalidCall(const QString& what)
    : Failure(invalidCallNumber, u"无效的过程调用："_s + what) {}

}  // namespace qinghe
