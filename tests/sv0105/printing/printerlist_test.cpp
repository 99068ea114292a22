// Where printers are looked for, and how their names are compared.

#include "handles/handle.hpp"
#include "support/servers/printing.hpp"
#include "sv/printer.hpp"

#include <algorithm>
#include <memory>
#include <stdexcept>

using SV::Printer;
using SV::String;

namespace {

constexpr SV::PrinterSwitches kSpooler{};
constexpr SV::PrinterSwitches kRegistry{true, false, false};
constexpr SV::PrinterSwitches kProfile{false, false, false};

class PrinterList : public support::PrintTest {};

String nameOf(support::PrintQueue const & queue) { return String(queue.name().c_str()); }

bool lists(SV::PrinterSwitches const & switches, String const & name) {
  SV::SetPrinterSwitches(switches);
  ISequence<String> const names = Printer::GetNames();
  return std::count(names.begin(), names.end(), name) == 1;
}

String defaultBy(SV::PrinterSwitches const & switches) {
  SV::SetPrinterSwitches(switches);
  return Printer::GetDefaultName();
}

/// A key of the registry that goes away with this object.
class OwnKey {
public:
  OwnKey(HKEY root, std::string const & path) : root_(root), path_(path) {
    HKEY key = nullptr;
    EXPECT_EQ(RegCreateKeyExA(root, path.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr), ERROR_SUCCESS);
    RegCloseKey(key);
  }
  OwnKey(OwnKey const &) = delete;
  OwnKey & operator=(OwnKey const &) = delete;
  ~OwnKey() { RegDeleteKeyA(root_, path_.c_str()); }

private:
  HKEY root_;
  std::string path_;
};

/// An entry of a section of WIN.INI with its former text back afterwards.
class OwnEntry {
public:
  OwnEntry(char const * section, std::string const & key, char const * text) : section_(section), key_(key) {
    char former[1024] = "";
    GetProfileStringA(section, key.c_str(), "", former, sizeof former);
    former_ = former;
    EXPECT_TRUE(WriteProfileStringA(section, key.c_str(), text));
  }
  OwnEntry(OwnEntry const &) = delete;
  OwnEntry & operator=(OwnEntry const &) = delete;
  ~OwnEntry() { WriteProfileStringA(section_, key_.c_str(), former_.empty() ? nullptr : former_.c_str()); }

private:
  char const * section_;
  std::string key_;
  std::string former_;
};

TEST_F(PrinterList, HasARealPrinterInAllWays) {
  support::PrintQueue const queue;
  for (SV::PrinterSwitches const & switches : {kSpooler, kRegistry, kProfile}) {
    EXPECT_TRUE(lists(switches, nameOf(queue)));
    EXPECT_EQ(Printer(nameOf(queue)).GetName(), nameOf(queue));
  }
}

TEST_F(PrinterList, OfOldProgramsIsThatOfWinIni) {
  support::PrintQueue const queue;
  String const name = nameOf(queue) + "-old";
  Printer::GetNames();
  OwnEntry const entry("devices", name.c_str(), "wineps.drv,CUPS:none");
  EXPECT_TRUE(lists(kProfile, name));
  EXPECT_FALSE(lists(kSpooler, name));
  EXPECT_FALSE(lists(kRegistry, name));
}

TEST_F(PrinterList, OfTheRegistryHasTheUsersConnections) {
  support::PrintQueue const queue;
  std::string const server = "kiv" + queue.name();
  OwnKey const key(HKEY_CURRENT_USER, "Printers\\Connections\\,," + server + ",Laser");
  String const name(("\\\\" + server + "\\Laser").c_str());
  EXPECT_TRUE(lists(kRegistry, name));
  EXPECT_FALSE(lists(kSpooler, name));
  EXPECT_FALSE(lists(kProfile, name));
  SV::SetPrinterSwitches(kRegistry);
  EXPECT_THROW(Printer{name}, std::runtime_error) << "it is listed, but nobody can draw on it";
}

TEST_F(PrinterList, OfTheRegistryComesBeforeTheChoiceOfTheSpooler) {
  support::PrintQueue const queue;
  std::string const server = "kiv" + queue.name();
  OwnKey const key(HKEY_CURRENT_USER, "Printers\\Connections\\,," + server + ",Laser");
  EXPECT_TRUE(lists({true, false, true}, String(("\\\\" + server + "\\Laser").c_str())));
}

TEST_F(PrinterList, HasOneDefaultForAllWays) {
  support::PrintQueue const queue;
  Printer::GetNames();
  OwnEntry const entry("windows", "device", (queue.name() + ",wineps.drv,CUPS:" + queue.name()).c_str());
  EXPECT_EQ(defaultBy(kSpooler), nameOf(queue));
  EXPECT_EQ(defaultBy(kRegistry), nameOf(queue));
  EXPECT_EQ(defaultBy(kProfile), nameOf(queue));
}

TEST_F(PrinterList, NeedsNoSpoolerForTheDefault) {
  support::PrintQueue const queue;
  Printer::GetNames();
  OwnEntry const entry("windows", "device", "No such one,driver,port");
  EXPECT_EQ(defaultBy(kRegistry), "No such one");
  EXPECT_EQ(defaultBy(kProfile), "No such one");
  EXPECT_THROW(Printer{}, std::runtime_error);
}

TEST_F(PrinterList, FindsANameInAnyCaseAndSpellsItAsTheSystem) {
  support::PrintQueue const queue("-Case");
  std::string upper = queue.name();
  std::transform(upper.begin(), upper.end(), upper.begin(), [](unsigned char c) { return std::toupper(c); });
  SV::SetPrinterSwitches(kSpooler);
  EXPECT_EQ(Printer(upper.c_str()).GetName(), nameOf(queue));
}

TEST_F(PrinterList, FindsANameOnlyInItsOwnCaseIfAsked) {
  support::PrintQueue const queue("-Case");
  std::string upper = queue.name();
  std::transform(upper.begin(), upper.end(), upper.begin(), [](unsigned char c) { return std::toupper(c); });
  SV::SetPrinterSwitches({false, true, true});
  EXPECT_THROW(Printer(upper.c_str()), std::runtime_error);
  EXPECT_EQ(Printer(nameOf(queue)).GetName(), nameOf(queue));
}

TEST_F(PrinterList, GrowsBeyondWhatFitsIntoTheFirstBuffer) {
  support::PrintQueue const queue;
  Printer::GetNames();
  std::string const longest = queue.name() + std::string(60, 'x');
  std::vector<std::unique_ptr<OwnEntry>> entries;
  for (int i = 0; i < 30; ++i)
    entries.push_back(std::make_unique<OwnEntry>("devices", longest + std::to_string(i), "driver,port"));
  for (int i = 0; i < 30; ++i)
    EXPECT_TRUE(lists(kProfile, String((longest + std::to_string(i)).c_str())));
}

} // namespace
