#include "package/file_facts.hpp"

#include <cwchar>

namespace kivtest {

namespace {

constexpr WORD kManifest = 24;

BOOL CALLBACK addLanguage(HMODULE, LPCWSTR, LPCWSTR, WORD language, LONG_PTR found) {
  reinterpret_cast<std::vector<int> *>(found)->push_back(language);
  return TRUE;
}

std::vector<int> languagesOf(HMODULE module, LPCWSTR type, LPCWSTR name) {
  std::vector<int> found;
  EnumResourceLanguagesW(module, type, name, addLanguage, reinterpret_cast<LONG_PTR>(&found));
  return found;
}

BOOL CALLBACK addLanguagesOfName(HMODULE module, LPCWSTR type, LPWSTR name, LONG_PTR found) {
  auto const languages = languagesOf(module, type, name);
  reinterpret_cast<std::set<int> *>(found)->insert(languages.begin(), languages.end());
  return TRUE;
}

BOOL CALLBACK addLanguagesOfType(HMODULE module, LPWSTR type, LONG_PTR found) {
  return EnumResourceNamesW(module, type, addLanguagesOfName, found);
}

/// Strings lie in blocks of 16.
LPCWSTR blockOf(int number) { return MAKEINTRESOURCEW(number / 16 + 1); }

std::vector<char> readVersion(std::string const & path) {
  DWORD ignored = 0;
  std::vector<char> data(GetFileVersionInfoSizeA(path.c_str(), &ignored));
  if (!data.empty() && !GetFileVersionInfoA(path.c_str(), 0, static_cast<DWORD>(data.size()), data.data()))
    data.clear();
  return data;
}

/// Null where the record has no such part.
template <class Part> Part const * partOf(std::vector<char> const & version, std::wstring const & name) {
  void * part = nullptr;
  UINT size = 0;
  if (version.empty() || !VerQueryValueW(version.data(), name.c_str(), &part, &size) || size == 0)
    return nullptr;
  return static_cast<Part const *>(part);
}

std::string withPoints(DWORD high, DWORD low) {
  return std::to_string(HIWORD(high)) + '.' + std::to_string(LOWORD(high)) + '.' + std::to_string(HIWORD(low)) + '.' +
         std::to_string(LOWORD(low));
}

struct Translation {
  WORD language;
  WORD codePage;
};

Translation const * translationOf(std::vector<char> const & version) {
  return partOf<Translation>(version, L"\\VarFileInfo\\Translation");
}

} // namespace

FileFacts::FileFacts(std::string const & path)
    : module_(LoadLibraryExA(path.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE)), version_(readVersion(path)) {}

FileFacts::~FileFacts() {
  if (module_ != nullptr)
    FreeLibrary(module_);
}

std::set<int> FileFacts::languages() const {
  std::set<int> found;
  if (module_ != nullptr) // null is the process
    EnumResourceTypesW(module_, addLanguagesOfType, reinterpret_cast<LONG_PTR>(&found));
  return found;
}

std::vector<int> FileFacts::languagesOfStrings(int number) const {
  return module_ != nullptr ? languagesOf(module_, MAKEINTRESOURCEW(6), blockOf(number)) : std::vector<int>();
}

std::wstring FileFacts::string(int number) const {
  HRSRC const place = module_ != nullptr ? FindResourceW(module_, blockOf(number), MAKEINTRESOURCEW(6)) : nullptr;
  if (place == nullptr)
    return L"";
  auto const * text = static_cast<wchar_t const *>(LockResource(LoadResource(module_, place)));
  for (int i = 0; i < number % 16; ++i)
    text += 1 + *text; // each begins with its length
  return {text + 1, static_cast<std::size_t>(*text)};
}

std::string FileFacts::manifest() const {
  HRSRC const place =
      module_ != nullptr ? FindResourceA(module_, MAKEINTRESOURCEA(1), MAKEINTRESOURCEA(kManifest)) : nullptr;
  if (place == nullptr)
    return "";
  auto const * const text = static_cast<char const *>(LockResource(LoadResource(module_, place)));
  return {text, SizeofResource(module_, place)};
}

std::string FileFacts::version() const {
  auto const * const info = partOf<VS_FIXEDFILEINFO>(version_, L"\\");
  return info != nullptr ? withPoints(info->dwFileVersionMS, info->dwFileVersionLS) : "";
}

std::string FileFacts::productVersion() const {
  auto const * const info = partOf<VS_FIXEDFILEINFO>(version_, L"\\");
  return info != nullptr ? withPoints(info->dwProductVersionMS, info->dwProductVersionLS) : "";
}

std::wstring FileFacts::versionText(std::wstring const & name) const {
  auto const * const translation = translationOf(version_);
  if (translation == nullptr)
    return L"";
  wchar_t block[16];
  std::swprintf(block, 16, L"%04X%04X", translation->language, translation->codePage);
  auto const * const text = partOf<wchar_t>(version_, std::wstring(L"\\StringFileInfo\\") + block + L"\\" + name);
  return text != nullptr ? text : L"";
}

int FileFacts::versionLanguage() const {
  auto const * const translation = translationOf(version_);
  return translation != nullptr ? translation->language : -1;
}

} // namespace kivtest
