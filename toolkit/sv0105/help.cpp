#include "sv/help.hpp"

#include "sv/application.hpp"

#include <utility>

namespace SV {

Help::Help() = default;

Help::Help(String const & fileName) : fileName_(fileName) {}

Help::~Help() {
  if (Application::GetHelp() == this)
    Application::ChangeHelp(nullptr);
}

String Help::ChangeFileName(String const & fileName) { return std::exchange(fileName_, String(fileName)); }

} // namespace SV
