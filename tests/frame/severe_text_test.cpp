#include "frame/severe.hpp"

#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <ostream>
#include <string>

using kivara::severeExceptionText;

namespace {

char const kTail[] = "\n\nThis is a severe error!!\n\nThe application will shut down immediately!\n\n"
                     "Please inform your administrator!!";

struct Row {
  long code;
  unsigned long arg;
  char const * message;
};
std::ostream & operator<<(std::ostream & out, Row const & row) { return out << row.code << ", " << row.arg; }

class SevereExceptionText : public testing::TestWithParam<Row> {};
TEST_P(SevereExceptionText, GivesNameCodeAndArgument) {
  std::string const text = severeExceptionText("Tool", GetParam().code, GetParam().arg).c_str();
  EXPECT_EQ(text, std::string("[Tool") + GetParam().message + kTail);
}
INSTANTIATE_TEST_SUITE_P(
    Codes, SevereExceptionText,
    testing::Values(Row{0x100, 0, "-10001]\nInternal error loading a resource."},
                    Row{0x100, 0x2002B7E, "-10001]\nInternal error loading a resource.\nResource ID: 33565566"},
                    Row{0x200, 0, "-10002]\nSystem object (e.g. window) could not be created."},
                    Row{0x200, 1400, "-10002]\nSystem object (e.g. window) could not be created.\nError code: 1400"},
                    Row{0x400, 0, "-10004]\nInternal error loading a resource file."},
                    Row{0x300, 0, "-10003]\nGeneral exception 768 occured."},
                    Row{0, 0, "-10003]\nGeneral exception 0 occured."},
                    Row{-7, 4294967295, "-10003]\nGeneral exception -7 occured.\nResource ID: 4294967295"}));

/// Text at the end of accessible memory, at an address that fits 32 bits.
class LowText {
public:
  explicit LowText(std::string const & text) {
    for (std::uintptr_t at = 0x10000000; at < 0x70000000 && block_ == nullptr; at += 0x10000)
      block_ = static_cast<char *>(VirtualAlloc(reinterpret_cast<void *>(at), 8192, MEM_RESERVE, PAGE_NOACCESS));
    VirtualAlloc(block_, 4096, MEM_COMMIT, PAGE_READWRITE);
    start_ = block_ + 4096 - text.size();
    std::memcpy(start_, text.data(), text.size());
  }
  ~LowText() { VirtualFree(block_, 0, MEM_RELEASE); }

  unsigned long address() const { return static_cast<unsigned long>(reinterpret_cast<std::uintptr_t>(start_)); }

private:
  char * block_ = nullptr;
  char * start_ = nullptr;
};

std::string fileText(unsigned long arg) { return severeExceptionText("Tool", 0x400, arg).c_str(); }

TEST(SevereExceptionText, NamesTheResourceFileAtTheAddress) {
  LowText const name(std::string("C:\\language\\tool72.dll", 23));
  EXPECT_EQ(fileText(name.address()), std::string("[Tool-10004]\nInternal error loading a resource file."
                                                  "\nResource file name: C:\\language\\tool72.dll") +
                                          kTail);
}

TEST(SevereExceptionText, ReadsAFileNameWithoutAnEndNoFurtherThanMemoryGoes) {
  LowText const name("unterminated");
  EXPECT_NE(fileText(name.address()).find("\nResource file name: unterminated\n\nThis is"), std::string::npos);
}

TEST(SevereExceptionText, AFileNameThatCannotBeReadIsEmpty) {
  for (unsigned long const address : {1UL, 0xFFFFUL})
    EXPECT_EQ(fileText(address),
              "[Tool-10004]\nInternal error loading a resource file.\nResource file name: " + std::string(kTail));
}

TEST(SevereExceptionText, AnEmptyFileNameIsGivenToo) {
  LowText const name(std::string(1, '\0'));
  EXPECT_EQ(fileText(name.address()),
            "[Tool-10004]\nInternal error loading a resource file.\nResource file name: " + std::string(kTail));
}

TEST(SevereExceptionText, AFileNameIsGivenToItsFirst1023Bytes) {
  LowText const name(std::string(2000, 'n'));
  EXPECT_NE(fileText(name.address()).find(": " + std::string(1023, 'n') + "\n\nThis is"), std::string::npos);
}

TEST(SevereExceptionText, AnEmptyNameLeavesTheBracket) {
  EXPECT_EQ(std::string(severeExceptionText("", 0x100, 0).c_str()).rfind("[-10001]\n", 0), 0u);
}

} // namespace
