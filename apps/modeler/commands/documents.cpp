#include "commands/documents.hpp"

#include "commands/filedialog.hpp"
#include "model/excerpt.hpp"
#include "model/modelwriter.hpp"
#include "texts/modelnotes.hpp"
#include "texts/modelreport.hpp"
#include "tools/winapi.hpp"

#include <algorithm>

using SV::String;

namespace modeler {
namespace {

constexpr char kSample[] = "models\\order.txt";

} // namespace

Commands Documents::GetCommands() {
  auto const open = [this] {
    if (String const file = chosenModel(frame_); file.Len() > 0)
      Open(file);
  };
  auto const save = [this] {
    if (String const file = chosenTarget(frame_, text(Text::ModelFiles), "txt"); file.Len() > 0)
      Save(file);
  };
  return {{MENU_FILE, FILE_OPEN_MODEL, named(Text::Open), open},
          {MENU_FILE, FILE_OPEN_SAMPLE, named(Text::OpenSample), [this] { Open(Kiv_GetProgramPathFilename(kSample)); }},
          {MENU_FILE, FILE_SAVE_AS, named(Text::SaveAs), save}};
}

void Documents::Open(String const & fileName) {
  ProcessModel model;
  ModelReport report;
  if (!readProcessModel(fileName, model, report)) {
    String const fault = reportText(report);
    journal_.Add("not opened: " + fileName + ": " + fault);
    sayError(filled(Text::ModelFault, excerptOfFileName(fileName), fault));
    return;
  }
  journal_.Add("opened: " + fileName + ", " + String(static_cast<int>(model.nodes.size())) + " nodes");
  lastFile_ = fileName;
  for (String const & note : notesOf(model))
    journal_.Add(note);
  show(model);
}

void Documents::show(ProcessModel const & model) {
  std::erase_if(windows_, [](auto const & window) { return window->GethWnd() == nullptr; });
  windows_.push_back(std::make_unique<ProcessWindow>(frame_, model, [this] {
    if (frontChanged_)
      frontChanged_();
  }));
  windows_.back()->Show();
}

void Documents::Save(String const & fileName) {
  ProcessWindow const * const window = GetFront();
  if (window == nullptr) {
    KivInfoBox(&frame_, text(Text::NothingToSave)).Execute();
    return;
  }
  if (!mayWrite(fileName))
    return;
  bool const isWritten = writeProcessModel(fileName, window->GetModel());
  journal_.Add((isWritten ? "saved: " : "not saved: ") + fileName);
  if (!isWritten)
    sayError(filled(Text::NotWritten, fileName));
}

ProcessWindow * Documents::GetFront() const { return dynamic_cast<ProcessWindow *>(frame_.GetActiveChild()); }

ProcessWindow * Documents::GetNewest() const {
  auto const isOpen = [](auto const & window) { return window->GethWnd() != nullptr; };
  auto const newest = std::find_if(windows_.rbegin(), windows_.rend(), isOpen);
  return newest != windows_.rend() ? newest->get() : nullptr;
}

void Documents::Retext() {
  for (auto const & window : windows_)
    window->Retext();
}

/// Whether the file is new, or the user agrees that it is overwritten.
bool Documents::mayWrite(String const & fileName) {
  return GetFileAttributesA(fileName.c_str()) == INVALID_FILE_ATTRIBUTES ||
         KivQueryBox(&frame_, SV::WB_YES_NO | SV::WB_DEF_NO, filled(Text::Overwrite, fileName)).Execute() ==
             SV::RET_YES;
}

void Documents::sayError(String const & message) {
  KivErrorBox(&frame_, KivErrorBox::WB_OK | KivErrorBox::WB_DEF_OK, message).Execute(ShowAlways);
}

} // namespace modeler
