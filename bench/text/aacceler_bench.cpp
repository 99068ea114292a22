// A string resource that was loaded before, beside loading it again.

#include "aacceler.hpp"
#include "support/ratio.hpp"
#include "sv/resource.hpp"

namespace {

constexpr long kText = 0x2002B7E;

/// Makes the English texts of the library the active ones.
class EnglishTexts {
public:
  EnglishTexts() : manager_("language\\2057\\kivara72.dll") { SV::Resource::SetResManager(&manager_); }

private:
  SV::ResMgr manager_;
};

bench::Pair const cached{"KivStringAcceleratorTable: a text known before", bench::timesAsFast(20),
                         [](benchmark::State & state) {
                           EnglishTexts const texts;
                           for (auto _ : state)
                             benchmark::DoNotOptimize(KivStringAcceleratorTable::GetGlobal()->GetCharPtr(kText));
                         },
                         "Resource::LoadString",
                         [](benchmark::State & state) {
                           EnglishTexts const texts;
                           for (auto _ : state)
                             benchmark::DoNotOptimize(SV::Resource::LoadString(kText));
                         }};

} // namespace
