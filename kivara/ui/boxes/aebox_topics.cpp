#include "aebox.hpp"
#include "tools/ctext.hpp"
#include "ui/boxes/helptopics.hpp"

#include <cstdlib>
#include <string_view>

namespace {

constexpr std::size_t kEndLength = 4; // "-01]"

unsigned long baseOf(std::string_view module) {
  for (kivara::HelpTopics const & topics : kivara::kHelpTopics)
    if (module == topics.module)
      return topics.base;
  return 0;
}

} // namespace

unsigned long KivErrorBox::GetHelpIDOfErrorText(SV::String const & text) {
  std::string_view const whole(text.c_str());
  std::size_t const bracket = whole.find(']');
  std::size_t const newline = whole.find('\n');
  if (!whole.starts_with('[') || bracket == std::string_view::npos || newline == std::string_view::npos ||
      newline < bracket || bracket < kEndLength)
    return 0;
  SV::String prefix = text.substr(0, static_cast<int>(bracket) + 1);
  prefix.toLower();
  std::string_view const lower(prefix.c_str());
  unsigned long const base = baseOf(lower.substr(1, lower.size() - 1 - kEndLength));
  if (base == 0)
    return 0;
  char const digits[] = {lower[bracket - 2], lower[bracket - 1], '\0'};
  return base + static_cast<unsigned long>(std::atoi(digits));
}
