#include "commands/models/documents.hpp"

#include "dialogs/filedialog.hpp"
#include "dialogs/overwriting.hpp"
#include "model/excerpt.hpp"
#include "model/filenames.hpp"
#include "model/writing/modelwriter.hpp"
#include "texts/modelnotes.hpp"
#include "texts/modelreport.hpp"
#include "windows/documents/windowlist.hpp"

#include <algorithm>

using SV::String;

namespace modeler {
namespace {

constexpr char kSample[] = "models\\order.txt";

template <class Document> bool isOpen(Document const & document) { return document.window->GethWnd() != nullptr; }

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
  return {withKey({MENU_FILE, FILE_OPEN_MODEL, named(Text::Open), open}, control('O')),
          {MENU_FILE, FILE_OPEN_SAMPLE, named(Text::OpenSample), [this] { Open(Kiv_GetProgramPathFilename(kSample)); }},
          withKey({MENU_FILE, FILE_SAVE_AS, named(Text::SaveAs), save}, control('S'))};
}

void Documents::Open(String const & fileName) {
  if (bringToFront(fileName))
    return;
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
  show(fileName, model);
}

bool Documents::bringToFront(String const & fileName) {
  auto const found = std::find_if(documents_.begin(), documents_.end(), [&fileName](Document const & document) {
    return isOpen(document) && isSameFile(document.file, fileName);
  });
  if (found == documents_.end())
    return false;
  journal_.Add("open already: " + fileName);
  lastFile_ = fileName;
  showInFront(found->window->GethWnd());
  return true;
}

void Documents::show(String const & fileName, ProcessModel const & model) {
  std::erase_if(documents_, [](Document const & document) { return !isOpen(document); });
  auto const frontChanged = [this] {
    if (frontChanged_)
      frontChanged_();
  };
  documents_.push_back(
      {SV::DirEntry(fileName).GetFull(), std::make_unique<ProcessWindow>(frame_, model, frontChanged)});
  documents_.back().window->Show();
}

void Documents::Save(String const & fileName) {
  ProcessWindow const * const window = GetFront();
  if (window == nullptr) {
    KivInfoBox(&frame_, text(Text::NothingToSave)).Execute();
    return;
  }
  writeFile(frame_, journal_, "saved", fileName, [&] { return writeProcessModel(fileName, window->GetModel()); });
}

ProcessWindow * Documents::GetFront() const { return dynamic_cast<ProcessWindow *>(frame_.GetActiveChild()); }

ProcessWindow * Documents::GetNewest() const {
  auto const newest = std::find_if(documents_.rbegin(), documents_.rend(), isOpen<Document>);
  return newest != documents_.rend() ? newest->window.get() : nullptr;
}

void Documents::Retext() {
  for (Document const & document : documents_)
    document.window->Retext();
}

void Documents::sayError(String const & message) {
  KivErrorBox(&frame_, KivErrorBox::WB_OK | KivErrorBox::WB_DEF_OK, message).Execute(ShowAlways);
}

} // namespace modeler
