#include "resources/resourcefile.hpp"

#include "application/toolkit.hpp"
#include "handles/handle.hpp"

#include <string>

namespace SV::detail {

namespace {

std::wstring toWide(String const & text) {
  std::wstring wide(static_cast<std::size_t>(text.Len()), L'\0');
  int const length = MultiByteToWideChar(CP_ACP, 0, text.c_str(), text.Len(), wide.data(), text.Len());
  wide.resize(static_cast<std::size_t>(length));
  return wide;
}

/// With the separator at its end.
std::wstring programFolder() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    DWORD const length = GetModuleFileNameW(toolkit().instance, path.data(), static_cast<DWORD>(path.size()));
    if (length < path.size()) {
      path.resize(length);
      break;
    }
    path.resize(path.size() * 2);
  }
  return path.substr(0, path.find_last_of(L"\\/") + 1);
}

bool isSeparator(wchar_t c) { return c == L'\\' || c == L'/'; }

/// The result does not depend on the working directory or drive.
std::wstring absolutePath(std::wstring const & name) {
  bool const hasDrive = name.size() > 2 && name[1] == L':' && isSeparator(name[2]);
  bool const isRooted = !name.empty() && isSeparator(name[0]);
  if (hasDrive || (isRooted && name.size() > 1 && isSeparator(name[1])))
    return name;
  std::wstring const folder = programFolder();
  if (!isRooted)
    return folder + name;
  return folder.size() > 1 && folder[1] == L':' ? folder.substr(0, 2) + name : name;
}

/// A file open for reading, which no program can change meanwhile, and its bytes.
class MappedFile {
public:
  explicit MappedFile(std::wstring const & path)
      : file_(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr)) {
    LARGE_INTEGER size;
    if (!file_ || !GetFileSizeEx(file_.get(), &size) || size.QuadPart > MAXLONG)
      return;
    mapping_.reset(CreateFileMappingW(file_.get(), nullptr, PAGE_READONLY, 0, 0, nullptr));
    if (mapping_)
      view_.reset(MapViewOfFile(mapping_.get(), FILE_MAP_READ, 0, 0, 0));
    size_ = static_cast<std::size_t>(size.QuadPart);
  }

  std::span<std::byte const> bytes() const {
    return view_ ? std::span(static_cast<std::byte const *>(view_.get()), size_) : std::span<std::byte const>();
  }

private:
  handles::File file_;
  handles::KernelObject mapping_;
  handles::FileView view_;
  std::size_t size_ = 0;
};

/// The system appends ".dll" to a last component without a dot; a dot at its end prevents that.
std::wstring withoutCompletion(std::wstring const & path) {
  std::size_t const lastComponent = path.find_last_of(L"\\/") + 1;
  return path.find(L'.', lastComponent) == std::wstring::npos ? path + L'.' : path;
}

} // namespace

HMODULE loadResourceFile(String const & name) {
  std::wstring const path = absolutePath(toWide(name));
  MappedFile const file(path);
  if (!isSoundResourceFile(file.bytes()))
    return nullptr;
  return LoadLibraryExW(withoutCompletion(path).c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
}

} // namespace SV::detail
