#include "background/startfacts.hpp"

#include "texts/texts.hpp"

using SV::String;

namespace modeler {
namespace {

String yesOrNo(bool value) { return text(value ? Text::Yes : Text::No); }

void addCommandLine(ISequence<Fact> & facts) {
  KivCmdline const & cmdline = KivCmdline::Instance();
  facts.push_back({text(Text::Program), cmdline.getParam(0)});
  for (int i = 1; i < cmdline.getCount(); ++i)
    facts.push_back({filled(Text::Argument, String(i)), cmdline.getParam(i)});
}

String windowsGeneration() {
  if (Kiv_IsAtLeastWindows10())
    return filled(Text::OrLater, "Windows 10");
  return filled(Kiv_IsAtLeastWindows7() ? Text::OrLater : Text::OlderThan, "Windows 7");
}

String fontText() {
  SV::Font const & font = SV::Application::GetAppFont();
  return font.GetName() + ", " + filled(Text::FontSize, String(font.GetSize().height), String(font.GetCharSet()));
}

String percent(double scale) { return String(static_cast<int>(scale * 100)) + " %"; }

} // namespace

ISequence<Fact> startFacts() {
  ISequence<Fact> facts;
  facts.push_back({text(Text::VersionName), Kiv_GetPatchBuildVersionString()});
  addCommandLine(facts);
  facts.push_back({text(Text::ProgramFolder), Kiv_GetProgramPath(false)});
  facts.push_back({text(Text::StartFolder), Kiv_GetStartCWD(false)});
  facts.push_back({text(Text::Font), fontText()});
  facts.push_back({text(Text::System), windowsGeneration()});
  facts.push_back({text(Text::ScreenScale), percent(Kiv_GetSystemDPIScaleY())});
  facts.push_back({text(Text::DialogsSuppressed), yesOrNo(SV::Application::IsModalDialogSuppression())});
  facts.push_back({text(Text::Tracing), yesOrNo(KivCmdline::doTracing())});
  return facts;
}

} // namespace modeler
