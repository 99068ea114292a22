#include "amlstr.hpp"

#include "aplatfrm.hpp"
#include "base/openfile.hpp"
#include "locale/amlstr_format.hpp"

#include <io.h>

using SV::String;
namespace mlfile = kivara::mlfile;

namespace {

constexpr std::size_t kBuffer = 1 << 16;

/// A file that is open for reading and knows how much of it is left.
class InputFile {
public:
  explicit InputFile(String const & path) : file_(kivara::openFile(path.c_str(), "rb")) {
    if (!file_)
      return;
    std::setvbuf(file_.get(), nullptr, _IOFBF, kBuffer);
    long long const size = _filelengthi64(_fileno(file_.get()));
    left_ = size > 0 ? static_cast<unsigned long long>(size) : 0;
  }

  bool isOpen() const { return static_cast<bool>(file_); }
  unsigned long long left() const { return left_; }

  bool read(void * target, std::size_t size) {
    if (size > left_ || std::fread(target, 1, size, file_.get()) != size)
      return false;
    left_ -= size;
    return true;
  }

private:
  kivara::OpenFile file_;
  unsigned long long left_ = 0;
};

bool isOfThisFormat(InputFile & file) {
  std::uint32_t magic = 0;
  std::uint32_t version = 0;
  return file.read(&magic, sizeof magic) && magic == mlfile::kMagic && file.read(&version, sizeof version) &&
         version == mlfile::kVersion;
}

bool readText(InputFile & file, std::uint32_t length, String & text) {
  if (length > file.left() || length > static_cast<std::uint32_t>(SV::STRING_MAXLEN))
    return false; // before anything is allocated
  text = String::ofLength(static_cast<std::int32_t>(length));
  char * const characters = text.writable();
  if (!file.read(characters, length))
    return false;
  for (std::uint32_t i = 0; i < length; ++i)
    characters[i] = static_cast<char>(static_cast<unsigned char>(characters[i]) ^ mlfile::kMask);
  return true;
}

} // namespace

KivMLResFileReader::KivMLResFileReader(unsigned short language, KivStringContainer * container, String const & fileName)
    : container_(container), path_(Kiv_GetProgramPath(true) + "language\\" + String(language) + "\\" + fileName) {}

KivMLResFileReader::~KivMLResFileReader() = default;

bool KivMLResFileReader::Read() {
  InputFile file(path_);
  if (!file.isOpen() || !isOfThisFormat(file))
    return false;
  for (;;) {
    std::uint32_t length = 0;
    if (!file.read(&length, sizeof length))
      return false;
    if (length == 0)
      return true;
    std::uint32_t resId = 0;
    String text;
    if (!file.read(&resId, sizeof resId) || !readText(file, length, text))
      return false;
    container_->Add(static_cast<unsigned short>(resId), text);
  }
}
