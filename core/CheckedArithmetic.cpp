#include "core/GermanNumbers.h"

#include <cmath>

#include "core/RunError.h"

namespace zw {

double checkedSum(double left, double right)
{
    const double result = left + right;
    if (!std::isfinite(result))
        throw RunError::overflow();
    return result;
}

double checkedDifference(double left, double right)
{
    const double result = left - right;
    if (!std::isfinite(result))
        throw RunError::overflow();
    return result;
}

double checkedProduct(double left, double right)
{
    const double result = left * right;
    if (!std::isfinite(result))
        throw RunError::overflow();
    return result;
}

double checkedQuotient(double dividend, double divisor)
{
    if (divisor == 0.0) {
        if (dividend == 0.0)
            throw RunError::overflow();
        throw RunError::divisionByZero();
    }
    const double result = dividend / divisor;
    if (!std::isfinite(result))
        throw RunError::overflow();
    return result;
}

} // namespace zw
