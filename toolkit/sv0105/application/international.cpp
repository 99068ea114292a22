#include "sv/application.hpp"

#include "application/toolkit.hpp"

#include <utility>

namespace SV {

namespace {

International & current() {
  International *& international = detail::toolkit().international;
  if (!international)
    international = new International;
  return *international;
}

} // namespace

International Application::ChangeAppInternational(International const & international) {
  return std::exchange(current(), International(international));
}

International const & Application::GetAppInternational() { return current(); }

} // namespace SV
