#include "frame/severe.hpp"

#include "tools/winapi.hpp"

#include <cstdint>

using SV::String;

namespace kivara {
namespace {

constexpr char kTail[] = "\n\nThis is a severe error!!\n\nThe application will shut down immediately!\n\n"
                         "Please inform your administrator!!";

/// The string at an address that was passed in 32 bits and so may be invalid: it is read without a fault, and is empty if
/// nothing can be read.
String textAt(unsigned long address) {
  char text[1024];
  std::size_t length = 0;
  std::uintptr_t const start = address;
  while (length + 1 < sizeof text &&
         ReadProcessMemory(GetCurrentProcess(), reinterpret_cast<void const *>(start + length), text + length, 1,
                           nullptr) &&
         text[length] != '\0')
    ++length;
  return String(text, static_cast<std::int32_t>(length));
}

String resourceFragment(unsigned long arg) {
  String text("-10001]\nInternal error loading a resource.");
  if (arg != 0)
    text += "\nResource ID: " + String(arg);
  return text;
}

String systemObjectFragment(unsigned long arg) {
  String text("-10002]\nSystem object (e.g. window) could not be created.");
  if (arg != 0)
    text += "\nError code: " + String(arg);
  return text;
}

String resourceFileFragment(unsigned long arg) {
  String text("-10004]\nInternal error loading a resource file.");
  if (arg != 0)
    text += "\nResource file name: " + textAt(arg);
  return text;
}

String generalFragment(long code, unsigned long arg) {
  String text = "-10003]\nGeneral exception " + String(code) + " occured.";
  if (arg != 0)
    text += "\nResource ID: " + String(arg);
  return text;
}

String fragment(long code, unsigned long arg) {
  switch (code) {
  case 0x100: return resourceFragment(arg);
  case 0x200: return systemObjectFragment(arg);
  case 0x400: return resourceFileFragment(arg);
  default: return generalFragment(code, arg);
  }
}

} // namespace

String severeExceptionText(String const & name, long code, unsigned long arg) {
  return "[" + name + fragment(code, arg) + kTail;
}

} // namespace kivara
