#include "report/model/InvalidArgument.h"

#ifdef _WIN32
#include "afx.h"
#else
#include <stdexcept>
#endif

namespace report
{

void ThrowInvalidArgument()
{
#ifdef _WIN32
    AfxThrowInvalidArgException();
#else
    throw std::invalid_argument("report");
#endif
}

} // namespace report
