#include "adll.hpp"

#include "atrace.hpp"
#include "base/boundedtext.hpp"
#include "tools/winapi.hpp"

#include <cstring>

using SV::String;

namespace {

constexpr int kLineSize = 512;

/// \param event  what happened, without the name
void report(char const * event, String const & name) {
  constexpr int around = sizeof "[kivdll]  ''\n"; // all but event and name, with the NUL
  int const room = kLineSize - around - static_cast<int>(std::strlen(event));
  KivDebugOut(kivara::BoundedText<kLineSize>("[kivdll] %s '%.*s'\n", event, room, name.c_str()).c_str());
}

} // namespace

KivDLLLoader::~KivDLLLoader() { KivDLLLoader::unload(); }

bool KivDLLLoader::load(char const * file) {
  String const name(file); // copied first: it may be the former name, which unload resets
  if (handle != nullptr)
    unload();
  filename = name;
  return _finishLoad("Load", LoadLibraryA(name.c_str()));
}

bool KivDLLLoader::loadExt(char const * file, unsigned long flags) {
  String const name(file);
  if (handle != nullptr)
    unload();
  filename = name;
  return _finishLoad("LoadEx", LoadLibraryExA(name.c_str(), nullptr, flags));
}

bool KivDLLLoader::_finishLoad(char const * event, HINSTANCE__ * loaded) {
  handle = loaded;
  _rememberLastError(handle == nullptr);
  report(event, filename);
  return lastError == 0;
}

bool KivDLLLoader::unload() {
  if (handle == nullptr)
    return lastError == 0;
  _rememberLastError(FreeLibrary(handle) == 0);
  handle = nullptr;
  report("Unload", filename);
  filename = String();
  return lastError == 0;
}

bool KivDLLLoader::isLoaded() const { return handle != nullptr; }
String const & KivDLLLoader::getFilename() const { return filename; }
unsigned long KivDLLLoader::getLastError() const { return lastError; }

void * KivDLLLoader::_getGenericFunctionPtr(char const * name) {
  void * const function = reinterpret_cast<void *>(GetProcAddress(handle, kivara::orEmpty(name)));
  _rememberLastError(function == nullptr);
  return function;
}

void KivDLLLoader::_rememberLastError(bool failed) { lastError = failed ? GetLastError() : 0; }
