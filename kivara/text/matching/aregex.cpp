#include "aregex.hpp"

#include "aebox.hpp"
#include "base/textids.hpp"
#include "sv/application.hpp"
#include "sv/resource.hpp"
#include "text/matching/codepagelocale.hpp"

#include <cstring>

using SV::String;

namespace {

namespace texts = kivara::texts;

constexpr int kFlagsOfAssignment = REG_NOSUB;
constexpr std::size_t kEngineText = 500;

String loadText(texts::Id id) { return SV::Resource::LoadString(id); }

/// The text of a code in the language pack; 0 for a code that only the engine has a text for.
texts::Id textOf(int code) {
  if (code >= REG_ECOLLATE && code <= REG_ERANGE)
    return texts::kFirstFault + static_cast<texts::Id>(code - REG_ECOLLATE);
  return code == REG_BADRPT ? texts::kNothingToRepeat : 0;
}

/// The template with the text in place of its first "%s".
String filled(String const & pattern, char const * text) {
  char const * const place = std::strstr(pattern.c_str(), "%s");
  if (place == nullptr)
    return pattern;
  auto const at = static_cast<std::int32_t>(place - pattern.c_str());
  return pattern.substr(0, at) + text + pattern.substr(at + 2);
}

} // namespace

__KivRefCounted::__KivRefCounted() : refCount_(1) {}
__KivRefCounted::__KivRefCounted(__KivRefCounted const & other) = default;
__KivRefCounted & __KivRefCounted::operator=(__KivRefCounted const & other) = default;
__KivRefCounted::~__KivRefCounted() = default;

__KivRefCounted & __KivRefCounted::addRef() {
  ++refCount_;
  return *this;
}

void __KivRefCounted::removeRef() {
  if (refCount_-- == 1)
    delete this;
}

KivRegExData::KivRegExData(int flags) : compileFlags(flags), compiled() {}
KivRegExData::~KivRegExData() { regfree(&compiled); }

KivRegEx::KivRegEx() : data(nullptr) {}
KivRegEx::KivRegEx(char const * pattern, int flags) : data(nullptr) { regComp(pattern, flags, 1); }

KivRegEx::KivRegEx(KivRegEx const & other) : data(other.data) {
  if (data != nullptr)
    data->addRef();
}

KivRegEx::~KivRegEx() {
  if (data != nullptr)
    data->removeRef();
  data = nullptr;
}

// The expression that was held is not released: matchers were always assigned before they held one.
// NOLINTNEXTLINE(bugprone-unhandled-self-assignment): adds a reference that is never removed, likewise
KivRegEx const & KivRegEx::operator=(KivRegEx const & other) {
  if (other.data != nullptr)
    other.data->addRef();
  data = other.data;
  return *this;
}

KivRegEx const & KivRegEx::operator=(char const * pattern) {
  regComp(pattern, kFlagsOfAssignment, 1);
  return *this;
}

int KivRegEx::operator!() const { return data == nullptr ? 1 : 0; }
KivRegEx::operator void *() const { return data != nullptr ? reinterpret_cast<void *>(1) : nullptr; }

KivRegEx::KivRegExError KivRegEx::regComp(char const * pattern, int flags, int showErrors) {
  if (data != nullptr) {
    data->removeRef();
    data = nullptr; // what follows may throw
  }
  data = new KivRegExData(flags | REG_EXTENDED);
  int code = 0;
  {
    kivara::CodePageLocale const locale;
    code = regcomp(&data->compiled, pattern, data->compileFlags);
  }
  if (code != 0) {
    data->removeRef();
    data = nullptr;
    if (showErrors != 0)
      displayError(static_cast<KivRegExError>(code));
  }
  return static_cast<KivRegExError>(code);
}

KivRegEx::KivRegExError KivRegEx::regExec(char const * text, int showErrors) const {
  if (data == nullptr)
    return NoMatch;
  auto const error = static_cast<KivRegExError>(regexec(&data->compiled, text, 0, nullptr, 0));
  if (error != Success && showErrors != 0)
    displayError(error);
  return error;
}

KivRegEx::KivRegExError KivRegEx::regExec(char const * text, int & start, int & end, int showErrors) const {
  if (data == nullptr)
    return NoMatch;
  start = end = -1;
  regmatch_t found = {-1, -1};
  auto const error = static_cast<KivRegExError>(regexec(&data->compiled, text, 1, &found, 0));
  if (error == Success) {
    start = found.rm_so;
    end = found.rm_eo;
  } else if (showErrors != 0) {
    displayError(error);
  }
  return error;
}

int KivRegEx::resultOf(KivRegExError error) const {
  if (error > NoMatch)
    displayError(error);
  return error == Success ? 1 : 0;
}

int KivRegEx::match(char const * text) const { return resultOf(regExec(text, 0)); }
int KivRegEx::match(char const * text, int & start, int & end) const { return resultOf(regExec(text, start, end, 0)); }

String KivRegEx::fmtErrMsg(KivRegExError error) const {
  if (texts::Id const id = textOf(error); id != 0)
    return loadText(id);
  char text[kEngineText];
  regerror(error, data != nullptr ? &data->compiled : nullptr, text, sizeof text);
  return filled(loadText(texts::kEngineText), text);
}

void KivRegEx::displayError(KivRegExError error) const {
  String const message = error == OutOfMemory ? loadText(texts::kNoMemoryForIt)
                                              : loadText(texts::kBadExpression) + "\n\n" + fmtErrMsg(error);
  KivErrorBox(SV::Application::GetAppWindow(), KivErrorBox::WB_OK, message).Execute(ShowAlways);
}
