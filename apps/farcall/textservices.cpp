// textservices.dll: services for texts, which other modules reach by far calls. It exports nothing.
//
//   text.words  how many words there are between white space
//   text.upper  the text in capitals

#include "afarcall.hpp"
#include "agreement.hpp"

#include <cstdlib>
#include <cstring>
#include <new>

using SV::String;

namespace {

KivMemBuf bufferOf(String const & text) {
  KivMemBuf buffer;
  auto const size = static_cast<std::size_t>(text.Len());
  if (size == 0)
    return buffer;
  buffer.data = std::malloc(size);
  if (buffer.data == nullptr)
    throw std::bad_alloc();
  std::memcpy(buffer.data, text.c_str(), size);
  buffer.size = size;
  return buffer;
}

bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

KivMemBuf countWords(KivInputData const & input) {
  int words = 0;
  bool isInWord = false;
  for (std::int32_t i = 0; i < input.text.Len(); ++i) {
    bool const isWord = !isSpace(input.text.charAt(i));
    if (isWord && !isInWord)
      ++words;
    isInWord = isWord;
  }
  return bufferOf(String(words));
}

KivMemBuf raise(KivInputData const & input) {
  String text = input.text;
  text.toUpper();
  return bufferOf(text);
}

/// Made while the DLL is loaded.
struct Registration {
  Registration() {
    KivFarCallFactory::Instance().registerReceiver("text.words", countWords);
    KivFarCallFactory::Instance().registerReceiver("text.upper", raise);
  }
} const registration;

} // namespace
