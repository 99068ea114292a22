#include "diagnostics/crash/exceptions.hpp"
#include "diagnostics/crash/report.hpp"
#include "support/data/files.hpp"

#include <gtest/gtest.h>

#include <winioctl.h>

#include <string>

using namespace kivara::crash;

namespace {

/// What is written to the report while it lives, in plain text.
class PlainReport {
public:
  PlainReport() {
    EXPECT_TRUE(openReport(path_.c_str(), CREATE_ALWAYS));
    dumpState().scramble = false;
  }
  PlainReport(PlainReport const &) = delete;
  PlainReport & operator=(PlainReport const &) = delete;
  ~PlainReport() { dumpState().closeReport(); }

  std::string text() const {
    dumpState().closeReport();
    return support::readFile(path_).value_or("no file");
  }

private:
  support::TempFolder const folder_;
  std::string const path_ = folder_ / "report.txt";
};

TEST(FaultLocation, SaysThatAnAddressIsInNoSectionOfItsModule) {
  auto const * const module = reinterpret_cast<char const *>(GetModuleHandleA(nullptr));
  auto const * const dos = reinterpret_cast<IMAGE_DOS_HEADER const *>(module);
  auto const * const headers = reinterpret_cast<IMAGE_NT_HEADERS const *>(module + dos->e_lfanew);
  PlainReport const report;
  FaultLocation const location = locateFault(module + 0x10);
  EXPECT_EQ(report.text(), "\r\n# '" + support::binFolder().substr(0, 7) + "': Could not find RVA 00000010h in " +
                               std::to_string(headers->FileHeader.NumberOfSections) + " PE sections\r\n");
  EXPECT_EQ(location.section, 0u);
  EXPECT_EQ(location.offset, 0u);
  EXPECT_STREQ(location.module, "");
}

TEST(ReportWriter, CutsATextAfter4096Bytes) {
  for (std::size_t const length : {4095u, 4096u, 4097u, 10000u}) {
    PlainReport const report;
    kivara::crash::write("%s", std::string(length, 'x').c_str());
    EXPECT_EQ(report.text(), std::string(length < 4096 ? length : 4096, 'x')) << length;
  }
}

TEST(ReportWriter, AppendsToAFileOfMoreThan4Gigabytes) {
  support::TempFolder const folder;
  std::string const path = folder / "report.txt";
  LARGE_INTEGER size{};
  size.QuadPart = 0x100000010;
  HANDLE const file = CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
  DWORD returned = 0;
  DeviceIoControl(file, FSCTL_SET_SPARSE, nullptr, 0, nullptr, 0, &returned, nullptr);
  ASSERT_TRUE(SetFilePointerEx(file, size, nullptr, FILE_BEGIN));
  ASSERT_TRUE(SetEndOfFile(file));
  CloseHandle(file);
  ASSERT_TRUE(openReport(path.c_str(), OPEN_ALWAYS));
  kivara::crash::write("%s", "line");
  LARGE_INTEGER after{};
  EXPECT_TRUE(GetFileSizeEx(dumpState().report, &after));
  dumpState().closeReport();
  EXPECT_EQ(after.QuadPart, size.QuadPart + 4);
}

} // namespace
