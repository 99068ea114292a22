#include "modules/image.hpp"

#include "common/text.hpp"

#include <zlib.h>

#include <algorithm>

namespace kivcrash {
namespace {

constexpr std::uint32_t kMostSections = 96; // those of the system's loader
constexpr char kDebugLink[] = ".gnu_debuglink";
constexpr char kDebugInfo[] = ".debug_info";

/// "/123" is a place in the table of strings, which comes after the symbols.
std::string sectionName(Bytes const & file, IMAGE_FILE_HEADER const & header, IMAGE_SECTION_HEADER const & section) {
  auto const * const stored = reinterpret_cast<char const *>(section.Name);
  std::string const name(stored, std::find(stored, stored + IMAGE_SIZEOF_SHORT_NAME, '\0'));
  if (!name.starts_with('/') || name.find_first_not_of("0123456789", 1) != std::string::npos || name.size() < 2)
    return name;
  std::uint64_t const strings =
      std::uint64_t{header.PointerToSymbolTable} + std::uint64_t{header.NumberOfSymbols} * IMAGE_SIZEOF_SYMBOL;
  return file.zeroEnded(strings + std::stoul(name.substr(1))).value_or(name);
}

/// In a file of debug symbols alone, the other sections have sizes, but nothing is there.
std::optional<Image::Section> readSection(Bytes const & file, IMAGE_FILE_HEADER const & header,
                                          IMAGE_SECTION_HEADER const & entry) {
  std::uint32_t const size = std::max<std::uint32_t>(entry.Misc.VirtualSize, 1);
  Image::Section section{sectionName(file, header, entry), entry.VirtualAddress, size, {}};
  bool const isEmpty = entry.PointerToRawData == 0 || (entry.Characteristics & IMAGE_SCN_CNT_UNINITIALIZED_DATA) != 0;
  if (isEmpty)
    return section;
  std::uint32_t const stored = entry.Misc.VirtualSize == 0
                                   ? entry.SizeOfRawData
                                   : std::min<std::uint32_t>(entry.SizeOfRawData, entry.Misc.VirtualSize);
  std::optional<Bytes> const bytes = file.part(entry.PointerToRawData, stored);
  if (!bytes)
    return std::nullopt;
  section.bytes = bytes->text();
  return section;
}

Image::Section const * named(std::vector<Image::Section> const & sections, std::string_view name) {
  auto const found = std::ranges::find(sections, name, &Image::Section::name);
  return found == sections.end() ? nullptr : &*found;
}

} // namespace

std::optional<Image> Image::read(std::shared_ptr<std::string const> bytes, std::string & reason) {
  Image image;
  image.bytes_ = std::move(bytes);
  Bytes const file(*image.bytes_);
  auto const dos = file.read<IMAGE_DOS_HEADER>(0);
  auto const place = dos && dos->e_lfanew >= 0 ? static_cast<std::uint64_t>(dos->e_lfanew) : file.size();
  auto const header = file.read<IMAGE_NT_HEADERS64>(place);
  reason = "it is no 64-bit program or DLL";
  if (!header || dos->e_magic != IMAGE_DOS_SIGNATURE || header->Signature != IMAGE_NT_SIGNATURE ||
      header->FileHeader.Machine != IMAGE_FILE_MACHINE_AMD64 ||
      header->OptionalHeader.Magic != IMAGE_NT_OPTIONAL_HDR64_MAGIC)
    return std::nullopt;
  reason = "it is damaged or cut off";
  image.header_ = *header;
  std::uint64_t const table =
      place + offsetof(IMAGE_NT_HEADERS64, OptionalHeader) + header->FileHeader.SizeOfOptionalHeader;
  if (header->FileHeader.NumberOfSections > kMostSections)
    return std::nullopt;
  for (unsigned i = 0; i < header->FileHeader.NumberOfSections; ++i) {
    auto const entry = file.read<IMAGE_SECTION_HEADER>(table + i * sizeof(IMAGE_SECTION_HEADER));
    std::optional<Section> section = entry ? readSection(file, header->FileHeader, *entry) : std::nullopt;
    if (!section)
      return std::nullopt;
    image.sections_.push_back(*std::move(section));
  }
  image.readFunctions();
  reason.clear();
  return image;
}

void Image::readFunctions() {
  IMAGE_DATA_DIRECTORY const & place = header_.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXCEPTION];
  for (Section const & section : sections_) {
    if (place.VirtualAddress < section.address || place.VirtualAddress - section.address >= section.bytes.size())
      continue;
    Bytes const table = Bytes(section.bytes).partUpToEnd(place.VirtualAddress - section.address, place.Size);
    for (std::uint64_t at = 0; auto const entry = table.read<RUNTIME_FUNCTION>(at); at += sizeof(RUNTIME_FUNCTION))
      if (entry->BeginAddress < entry->EndAddress)
        functions_.push_back(*entry);
    break;
  }
  std::ranges::sort(functions_, {}, &RUNTIME_FUNCTION::BeginAddress);
}

std::size_t Image::readMemory(std::uint64_t offset, void * to, std::size_t size) const {
  for (Section const & section : sections_) {
    if (offset < section.address || offset - section.address >= section.size)
      continue;
    std::uint64_t const from = offset - section.address;
    std::size_t const count = std::min<std::uint64_t>(size, section.size - from);
    std::memset(to, 0, count);
    std::string_view const stored = Bytes(section.bytes).partUpToEnd(from, count).text();
    std::ranges::copy(stored, static_cast<char *>(to));
    return count;
  }
  return 0;
}

RUNTIME_FUNCTION const * Image::functionAt(std::uint32_t offset) const {
  auto const after = std::ranges::upper_bound(functions_, offset, {}, &RUNTIME_FUNCTION::BeginAddress);
  if (after == functions_.begin() || offset >= std::prev(after)->EndAddress)
    return nullptr;
  return &*std::prev(after);
}

std::uint32_t Image::sizeOfCode() const {
  std::uint32_t end = 0;
  for (Section const & section : sections_)
    if (!section.name.starts_with(".debug_") && section.name != kDebugLink)
      end = std::max(end, section.address + section.size);
  return end;
}

std::optional<Image::DebugLink> Image::debugLink() const {
  Section const * const section = named(sections_, kDebugLink);
  if (!section)
    return std::nullopt;
  Bytes const content(section->bytes);
  std::optional<std::string> const name = content.zeroEnded(0);
  if (!name || name->empty() || fileName(*name) != *name)
    return std::nullopt;
  auto const checkSum = content.read<std::uint32_t>((name->size() + 4) / 4 * 4);
  return checkSum ? std::optional(DebugLink{*name, *checkSum}) : std::nullopt;
}

bool Image::hasDebugSymbols() const {
  Section const * const section = named(sections_, kDebugInfo);
  return section && !section->bytes.empty();
}

std::uint32_t linkCheckSum(std::string_view bytes) {
  return static_cast<std::uint32_t>(crc32_z(0, reinterpret_cast<unsigned char const *>(bytes.data()), bytes.size()));
}

} // namespace kivcrash
