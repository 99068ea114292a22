// Passwords: hidden, and read back by anybody; in memory as plain text.

#include "acrypto.hpp"
#include "ahttp.hpp"
#include "auser.hpp"
#include "support/data/files.hpp"
#include "support/processes/child_process.hpp"
#include "support/processes/debug_lines.hpp"
#include "system/processes/process_child.hpp"
#include "tools/winapi.hpp"

#include <winternl.h>

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>

namespace {

/// A text for the two forms of passwords; null where it cannot be.
std::string encrypted(long type, std::string text) {
  char * out = nullptr;
  KivEncryption::Instance().Encrypt(type, text.data(), out, -1);
  std::unique_ptr<char[]> const owner(out);
  return out != nullptr ? out : "(null)";
}

std::string decrypted(long type, std::string text) {
  char * out = nullptr;
  KivEncryption::Instance().Decrypt(type, text.data(), out);
  std::unique_ptr<char[]> const owner(out);
  return out != nullptr ? out : "(null)";
}

class HiddenText : public testing::TestWithParam<long> {};

TEST_P(HiddenText, IsReadBackByAnyProgramWithTheLibrary) {
  std::string const hidden = encrypted(GetParam(), "open sesame, 16.");
  EXPECT_EQ(hidden.find("sesame"), std::string::npos);
  EXPECT_EQ(decrypted(GetParam(), hidden), "open sesame, 16.") << "no key is asked for";
}

TEST_P(HiddenText, OfEqualTextsIsEqual) {
  EXPECT_EQ(encrypted(GetParam(), "the same password"), encrypted(GetParam(), "the same password"));
}

TEST_P(HiddenText, MayBeChangedWithoutBeingNoticed) {
  std::string hidden = encrypted(GetParam(), "open sesame, 16.");
  hidden[0] = hidden[0] == '0' ? '1' : '0';
  std::string const text = decrypted(GetParam(), hidden);
  EXPECT_NE(text, "(null)");
  EXPECT_NE(text, "open sesame, 16.");
}

INSTANTIATE_TEST_SUITE_P(OfForm, HiddenText, testing::Values(0, 2));

TEST(AccountOfAFile, IsReadByAnyProgramWithTheLibrary) {
  support::TempFolder const folder;
  EXPECT_EQ(support::runProgram({.program = "kivuser",
                                 .arguments = "write adbuser.txt scott",
                                 .workingFolder = folder.path(),
                                 .input = "tiger"})
                .exitCode,
            0u);
  EXPECT_EQ(support::readFile(folder / "adbuser.txt").value_or("tiger").find("tiger"), std::string::npos);
  KivDBUserUtils account((folder / "adbuser.txt").c_str());
  EXPECT_STREQ(account.GetDBUserPassword("").c_str(), "tiger");
}

/// Whether memory of this process that can be written to holds the text. The pattern has each unit one higher, so that it does not
/// find itself.
template <class Unit> bool isInMemory(std::basic_string<Unit> const & coded) {
  MEMORY_BASIC_INFORMATION region = {};
  for (char const * at = nullptr; VirtualQuery(at, &region, sizeof region) != 0;
       at = static_cast<char const *>(region.BaseAddress) + region.RegionSize) {
    if (region.State != MEM_COMMIT || region.Type != MEM_PRIVATE || region.Protect != PAGE_READWRITE)
      continue;
    auto const * const units = static_cast<Unit const volatile *>(region.BaseAddress);
    std::size_t const count = region.RegionSize / sizeof(Unit);
    for (std::size_t i = 0; i + coded.size() <= count; ++i) {
      std::size_t same = 0;
      while (same < coded.size() && static_cast<Unit>(units[i + same] + 1) == coded[same])
        ++same;
      if (same == coded.size())
        return true;
    }
  }
  return false;
}

/// "xylophone-zebra" with each character one higher.
std::wstring const kCodedSecret = L"yzmpqipof.{fcsb";

SV::WString secret() {
  std::wstring text = kCodedSecret;
  for (wchar_t & c : text)
    --c;
  SV::WString const made(text.c_str());
  SecureZeroMemory(text.data(), text.size() * sizeof(wchar_t));
  return made;
}

TEST(ProxyPassword, IsInMemoryAsPlainTextAsLongAsItsClientLives) {
  EXPECT_FALSE(isInMemory(kCodedSecret));
  KivHTTPClient client(L"http://127.0.0.1/", nullptr);
  client.SetProxyPassword(secret());
  EXPECT_TRUE(isInMemory(kCodedSecret));
}

/// A record in the memory of another process.
template <class Record> Record readFrom(HANDLE process, void const * place) {
  Record record = {};
  EXPECT_TRUE(ReadProcessMemory(process, place, &record, sizeof record, nullptr));
  return record;
}

/// Of another process, as any program of the user may read it.
std::string commandLineOf(HANDLE process) {
  PROCESS_BASIC_INFORMATION facts = {};
  EXPECT_EQ(NtQueryInformationProcess(process, ProcessBasicInformation, &facts, sizeof facts, nullptr), 0);
  auto const block = readFrom<PEB>(process, facts.PebBaseAddress);
  auto const line = readFrom<RTL_USER_PROCESS_PARAMETERS>(process, block.ProcessParameters).CommandLine;
  std::wstring text(line.Length / sizeof(wchar_t), L'\0');
  EXPECT_TRUE(ReadProcessMemory(process, line.Buffer, text.data(), line.Length, nullptr));
  return {text.begin(), text.end()};
}

TEST(CommandLine, IsReadByEveryOtherProgramOfTheUser) {
  kivtest::Gate const gate; // which opens at the end
  support::ChildProcess const child(
      {.program = "process_child", .arguments = "out:ready wait:" + gate.name() + " -uscott -ptiger"});
  ASSERT_TRUE(child.waitForOutput("ready"));
  HANDLE const process = OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, child.processId());
  std::string const line = commandLineOf(process);
  EXPECT_TRUE(line.ends_with(" -uscott -ptiger")) << line;
  CloseHandle(process);
}

TEST(DebugOutput, HasNoneOfThePasswordsThatTheLibraryIsGiven) {
  support::DebugLines const debug;
  char user[] = "scott";
  char domain[] = "sales";
  char password[] = "tiger";
  static_cast<void>(Kiv_LU(user, domain, password));
  encrypted(2, password);
  KivHTTPClient client(L"no URL", nullptr);
  client.SetProxy(L"proxy");
  client.SetProxyUsername(L"scott");
  client.SetProxyPassword(L"tiger");
  client.SendHttpRequest(L"GET", false);
  EXPECT_FALSE(debug.all().empty());
  for (std::string const & line : debug.all())
    EXPECT_EQ(line.find("tiger"), std::string::npos) << line;
}

TEST(DebugOutput, HasTheCommandLinesOfTheProgramsThatAreStarted) {
  support::DebugLines const debug;
  EXPECT_TRUE(kivtest::child("-ptiger").Execute(false));
  ASSERT_EQ(debug.all().size(), 1u);
  EXPECT_TRUE(debug.all()[0].ends_with("process_child.exe -ptiger\n"));
}

TEST(PlainText, StaysInMemoryAfterItsRelease) {
  // The beginning of a released block may be used by the heap.
  std::string const codedTail(kCodedSecret.begin(), kCodedSecret.end());
  ASSERT_FALSE(isInMemory(codedTail));
  std::string hidden;
  {
    std::string text = std::string(48, '.') + codedTail;
    for (char & c : text)
      c = static_cast<char>(c - 1);
    hidden = encrypted(2, text);
    SecureZeroMemory(text.data(), text.size());
  }
  char * texts[20] = {}; // since the heap may use one again at once
  for (char *& text : texts)
    KivEncryption::Instance().Decrypt(2, hidden.data(), text);
  for (char const * const text : texts)
    delete[] text;
  EXPECT_TRUE(isInMemory(codedTail));
}

} // namespace
