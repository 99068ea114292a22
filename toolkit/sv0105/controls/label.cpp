#include "controls/label.hpp"

#include "sv/control.hpp"

#include <string>

namespace SV {
namespace detail {

String systemLabel(String const & text) {
  std::string result;
  result.reserve(static_cast<std::size_t>(text.Len()));
  bool marked = false;
  for (int i = 0; i < text.Len(); ++i) {
    char const c = text.charAt(i);
    char const next = text.charAt(i + 1); // NUL after the end
    if (c == '~' && next == '~') {
      result += '~';
      ++i;
    } else if (c == '~' && next != '\0' && !marked) {
      result += '&';
      marked = true;
    } else if (c == '&') {
      result += "&&";
    } else {
      result += c;
    }
  }
  return String(result.c_str());
}

String literalLabel(String const & text) {
  std::string result;
  result.reserve(static_cast<std::size_t>(text.Len()));
  for (int i = 0; i < text.Len(); ++i)
    result.append(text.charAt(i) == '~' ? 2 : 1, text.charAt(i));
  return String(result.c_str());
}

} // namespace detail

String LabelControl::GetText() const { return text_; }

void LabelControl::SetText(String const & text) {
  text_ = text;
  Window::SetText(detail::systemLabel(text));
}

} // namespace SV
