// Facts that the user has set to something that no locale has.
#include "alocale.hpp"

#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace {

/// A fact of the user for the length of a test. The registry then holds again what it held.
class Setting {
public:
  Setting(LCTYPE type, char const * name, char const * text) : name_(name) {
    RegOpenKeyExA(HKEY_CURRENT_USER, "Control Panel\\International", 0, KEY_READ | KEY_WRITE, &key_);
    DWORD size = 0;
    if (RegQueryValueExA(key_, name, nullptr, nullptr, nullptr, &size) == ERROR_SUCCESS) {
      former_.emplace(size);
      RegQueryValueExA(key_, name, nullptr, nullptr, former_->data(), &size);
    }
    EXPECT_TRUE(SetLocaleInfoA(LOCALE_USER_DEFAULT, type, text)) << text;
  }
  Setting(Setting const &) = delete;
  Setting & operator=(Setting const &) = delete;
  ~Setting() {
    if (former_)
      RegSetValueExA(key_, name_, 0, REG_SZ, former_->data(), static_cast<DWORD>(former_->size()));
    else
      RegDeleteValueA(key_, name_);
    RegCloseKey(key_);
  }

private:
  char const * name_;
  HKEY key_ = nullptr;
  std::optional<std::vector<BYTE>> former_;
};

} // namespace

TEST(LocaleSettings, ACurrencySymbolOf5BytesIsWhole) {
  Setting const symbol(LOCALE_SCURRENCY, "sCurrency", "Krone");
  EXPECT_STREQ(Locale::Kiv_GetCurrencyName().c_str(), "Krone");
}

TEST(LocaleSettings, ALongerCurrencySymbolIsEmptyOrCut) {
  Setting const symbol(LOCALE_SCURRENCY, "sCurrency", "Guilders");
  std::string const told = Locale::Kiv_GetCurrencyName().c_str();
  EXPECT_TRUE(std::string("Guilders").starts_with(told)) << told;
  EXPECT_LE(told.size(), 6u);
}

TEST(LocaleSettings, TheCurrencySymbolIsTheDateSeparatorAsFarAsItFits) {
  {
    Setting const symbol(LOCALE_SCURRENCY, "sCurrency", "CHF");
    EXPECT_STREQ(Locale::Kiv_GetDateSeparator().c_str(), "CHF");
  }
  Setting const symbol(LOCALE_SCURRENCY, "sCurrency", "MOP$");
  std::string const told = Locale::Kiv_GetDateSeparator().c_str();
  EXPECT_TRUE(std::string("MOP$").starts_with(told)) << told;
  EXPECT_STREQ(Locale::Kiv_GetCurrencyName().c_str(), "MOP$");
}

TEST(LocaleSettings, ADecimalSeparatorOf3BytesIsWhole) {
  for (char const * separator : {",", "::", "<=>"}) {
    Setting const setting(LOCALE_SDECIMAL, "sDecimal", separator);
    EXPECT_STREQ(Locale::Kiv_GetDecimalSeparator().c_str(), separator);
  }
}

TEST(LocaleSettings, ASettingIsSeenAtOnce) {
  for (char const * separator : {";", "|"}) {
    Setting const setting(LOCALE_SLIST, "sList", separator);
    EXPECT_STREQ(Locale::Kiv_GetListSeparator().c_str(), separator);
  }
}
