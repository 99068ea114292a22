#include "resources/resourcefile.hpp"

#include <cstdint>
#include <cstring>
#include <optional>
#include <vector>

namespace SV::detail {

namespace {

using Bytes = std::span<std::byte const>;

template <class T> std::optional<T> read(Bytes bytes, std::uint64_t offset) {
  if (offset > bytes.size() || bytes.size() - offset < sizeof(T))
    return std::nullopt;
  T value;
  std::memcpy(&value, bytes.data() + offset, sizeof value);
  return value;
}

struct Headers {
  std::vector<IMAGE_SECTION_HEADER> sections;
  IMAGE_DATA_DIRECTORY resources = {};
};

/// The place of the resources according to the optional header, whose two forms only differ in length.
template <class OptionalHeader>
std::optional<IMAGE_DATA_DIRECTORY> resourceDirectory(Bytes file, std::uint64_t offset, WORD size) {
  auto const header = read<OptionalHeader>(file, offset);
  if (!header || size < sizeof(OptionalHeader))
    return std::nullopt;
  if (header->NumberOfRvaAndSizes <= IMAGE_DIRECTORY_ENTRY_RESOURCE)
    return IMAGE_DATA_DIRECTORY{};
  return header->DataDirectory[IMAGE_DIRECTORY_ENTRY_RESOURCE];
}

std::optional<IMAGE_DATA_DIRECTORY> resourceDirectory(Bytes file, std::uint64_t offset, WORD size) {
  auto const magic = read<WORD>(file, offset);
  if (magic == IMAGE_NT_OPTIONAL_HDR64_MAGIC)
    return resourceDirectory<IMAGE_OPTIONAL_HEADER64>(file, offset, size);
  if (magic == IMAGE_NT_OPTIONAL_HDR32_MAGIC)
    return resourceDirectory<IMAGE_OPTIONAL_HEADER32>(file, offset, size);
  return std::nullopt;
}

std::optional<Headers> headersOf(Bytes file) {
  auto const dos = read<IMAGE_DOS_HEADER>(file, 0);
  if (!dos || dos->e_magic != IMAGE_DOS_SIGNATURE || dos->e_lfanew < 0)
    return std::nullopt;
  auto const start = static_cast<std::uint64_t>(dos->e_lfanew);
  auto const signature = read<DWORD>(file, start);
  auto const header = read<IMAGE_FILE_HEADER>(file, start + sizeof(DWORD));
  if (!header || signature != IMAGE_NT_SIGNATURE || !(header->Characteristics & IMAGE_FILE_DLL))
    return std::nullopt;
  std::uint64_t const optional = start + sizeof(DWORD) + sizeof(IMAGE_FILE_HEADER);
  auto const resources = resourceDirectory(file, optional, header->SizeOfOptionalHeader);
  if (!resources)
    return std::nullopt;
  Headers headers;
  headers.resources = *resources;
  for (WORD i = 0; i < header->NumberOfSections; ++i) {
    auto const section = read<IMAGE_SECTION_HEADER>(file, optional + header->SizeOfOptionalHeader +
                                                              std::uint64_t{i} * sizeof(IMAGE_SECTION_HEADER));
    if (!section)
      return std::nullopt;
    headers.sections.push_back(*section);
  }
  return headers;
}

bool liesInFile(IMAGE_SECTION_HEADER const & section, std::size_t size) {
  return section.SizeOfRawData == 0 || std::uint64_t{section.PointerToRawData} + section.SizeOfRawData <= size;
}

/// The rest of the section at a virtual address, as the system finds it in a DLL mapped as data.
std::optional<Bytes> bytesAt(Bytes file, Headers const & headers, DWORD address) {
  for (IMAGE_SECTION_HEADER const & section : headers.sections) {
    if (address < section.VirtualAddress || address - section.VirtualAddress >= section.SizeOfRawData)
      continue;
    DWORD const offset = address - section.VirtualAddress;
    return file.subspan(section.PointerToRawData + std::size_t{offset}, section.SizeOfRawData - offset);
  }
  return std::nullopt;
}

/// The tree of resources: types, then names, then languages, whose entries point to the data.
class ResourceTree {
public:
  ResourceTree(Bytes file, Headers const & headers, Bytes tree)
      : file_(file), headers_(headers), tree_(tree),
        // More entries than fit in the section: folders are shared, and a walk might never end.
        entriesLeft_(tree.size() / sizeof(IMAGE_RESOURCE_DIRECTORY_ENTRY)) {}

  bool isSound() { return isSoundFolder(0, 0); }

private:
  static constexpr int kLanguageLevel = 2;
  static constexpr DWORD kHighBit = 0x80000000;

  bool isSoundFolder(DWORD offset, int level) {
    auto const folder = read<IMAGE_RESOURCE_DIRECTORY>(tree_, offset);
    if (!folder || level > kLanguageLevel)
      return false;
    std::size_t const count = std::size_t{folder->NumberOfNamedEntries} + folder->NumberOfIdEntries;
    for (std::size_t i = 0; i < count; ++i) {
      auto const entry = read<IMAGE_RESOURCE_DIRECTORY_ENTRY>(tree_, offset + sizeof(IMAGE_RESOURCE_DIRECTORY) +
                                                                         i * sizeof(IMAGE_RESOURCE_DIRECTORY_ENTRY));
      if (!entry || entriesLeft_-- == 0 || !isSoundEntry(*entry, level))
        return false;
    }
    return true;
  }

  bool isSoundEntry(IMAGE_RESOURCE_DIRECTORY_ENTRY const & entry, int level) {
    if ((entry.Name & kHighBit) && !isSoundName(entry.Name & ~kHighBit))
      return false;
    bool const leadsToFolder = (entry.OffsetToData & kHighBit) != 0;
    if (leadsToFolder != (level < kLanguageLevel))
      return false;
    return leadsToFolder ? isSoundFolder(entry.OffsetToData & ~kHighBit, level + 1) : isSoundData(entry.OffsetToData);
  }

  bool isSoundName(DWORD offset) const {
    auto const length = read<WORD>(tree_, offset);
    return length && offset + sizeof(WORD) + *length * sizeof(wchar_t) <= tree_.size();
  }

  bool isSoundData(DWORD offset) const {
    auto const data = read<IMAGE_RESOURCE_DATA_ENTRY>(tree_, offset);
    if (!data)
      return false;
    auto const bytes = bytesAt(file_, headers_, data->OffsetToData);
    return bytes && data->Size <= bytes->size();
  }

  Bytes file_;
  Headers const & headers_;
  Bytes tree_;
  std::size_t entriesLeft_;
};

} // namespace

bool isSoundResourceFile(Bytes file) {
  auto const headers = headersOf(file);
  if (!headers)
    return false;
  for (IMAGE_SECTION_HEADER const & section : headers->sections)
    if (!liesInFile(section, file.size()))
      return false;
  if (headers->resources.VirtualAddress == 0)
    return true;
  auto const tree = bytesAt(file, *headers, headers->resources.VirtualAddress);
  return tree && ResourceTree(file, *headers, *tree).isSound();
}

} // namespace SV::detail
