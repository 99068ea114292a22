#include "startfacts.hpp"

using SV::String;

namespace modeler {
namespace {

String yesOrNo(bool value) { return value ? "yes" : "no"; }

void addCommandLine(ISequence<Fact> & facts) {
  KivCmdline const & cmdline = KivCmdline::Instance();
  facts.push_back({"Program", cmdline.getParam(0)});
  for (int i = 1; i < cmdline.getCount(); ++i)
    facts.push_back({"Argument " + String(i), cmdline.getParam(i)});
}

String windowsGeneration() {
  if (Kiv_IsAtLeastWindows10())
    return "Windows 10 or later";
  return Kiv_IsAtLeastWindows7() ? "Windows 7 or later" : "older than Windows 7";
}

String fontText() {
  SV::Font const & font = SV::Application::GetAppFont();
  return font.GetName() + ", " + String(font.GetSize().height) + " pixels, character set " + String(font.GetCharSet());
}

String percent(double scale) { return String(static_cast<int>(scale * 100)) + " %"; }

} // namespace

ISequence<Fact> startFacts() {
  ISequence<Fact> facts;
  facts.push_back({"Version", Kiv_GetPatchBuildVersionString()});
  addCommandLine(facts);
  facts.push_back({"Program folder", Kiv_GetProgramPath(false)});
  facts.push_back({"Started in", Kiv_GetStartCWD(false)});
  facts.push_back({"Font", fontText()});
  facts.push_back({"System", windowsGeneration()});
  facts.push_back({"Screen scale", percent(Kiv_GetSystemDPIScaleY())});
  facts.push_back({"Dialogs suppressed", yesOrNo(SV::Application::IsModalDialogSuppression())});
  facts.push_back({"Tracing", yesOrNo(KivCmdline::doTracing())});
  return facts;
}

} // namespace modeler
