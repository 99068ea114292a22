// The language of the program, changed to and fro, and the words of every language.

#include "../activity.hpp"

#include "adattime.hpp"
#include "ainter.hpp"
#include "amlstr.hpp"

namespace endurance {
namespace {

constexpr unsigned short kEnglish = 2057;
constexpr unsigned short kGerman = 1031;
constexpr unsigned short kDecision = 1002; // resources/*/kivml.txt

class Languages : public Activity {
public:
  ~Languages() override { KivInternational::SetCurrentLanguageID(kEnglish); }

  bool round() override {
    bool const isEnglish = KivInternational::GetCurrentLanguageID() == kEnglish;
    KivInternational::SetCurrentLanguageID(isEnglish ? kGerman : kEnglish);
    expect(KivDate::MonthToStr(0) == (isEnglish ? "Januar" : "January"), "a month has no name of the language");
    expect(!KivInternational::errorLoadingResourceFiles(), "a language pack was not loaded");
    Kiv_InitializeMultiLanguageStrings();
    expect(Kiv_MultiLangEquals(Kiv_MultiLangGet(kDecision, kGerman), kDecision, nullptr), "a word is not recognised");
    Kiv_DeinitializeMultiLanguageStrings();
    return true;
  }
};

} // namespace

ActivityPtr changeLanguages(Place const &) { return std::make_unique<Languages>(); }

} // namespace endurance
