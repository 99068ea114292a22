#include "application/toolkit.hpp"

namespace SV::detail {

Toolkit & toolkit() {
  static Toolkit & data = *new Toolkit;
  return data;
}

void raiseException(long code, unsigned long arg) {
  if (Application * application = toolkit().application)
    application->Exception(code, arg);
}

} // namespace SV::detail
