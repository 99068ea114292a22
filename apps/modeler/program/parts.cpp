#include "program/parts.hpp"

#include "model/excerpt.hpp"
#include "texts/viewtexts.hpp"
#include "tools/winapi.hpp"
#include "windows/documents/documentwindow.hpp"
#include "windows/parts/arrangement.hpp"
#include "windows/scaling.hpp"

#include <utility>

using SV::String;

namespace modeler {
namespace {

constexpr long kPanes = 210; // the width at 96 dots per inch

String statusOf(Documents const & documents) {
  ProcessWindow const * const front = documents.GetFront();
  if (front == nullptr)
    return text(kNoModel);
  ProcessModel const & model = front->GetModel();
  return filled(kModelOfNodes, excerptOfWord(model.name), String(static_cast<int>(model.nodes.size())));
}

String lookInUse() {
  bool const isClassic = KivThemeManager::CurrentTheme().GetName() == String("Classic");
  return plain(text(isClassic ? kClassic : kModern));
}

FrontModel frontOf(Documents const & documents) {
  return [&documents]() -> ProcessModel const * {
    ProcessWindow const * const front = documents.GetFront();
    return front != nullptr ? &front->GetModel() : nullptr;
  };
}

void place(SV::Window & window, SV::Rectangle const & area) { window.SetPosSizePixel(area.TopLeft(), area.GetSize()); }

} // namespace

Parts::Parts(SV::MDIFrame & frame, Documents const & documents, Settings const & settings,
             std::function<void()> changed)
    : frame_(frame), settings_(settings), changed_(std::move(changed)),
      outline_(frame, frontOf(documents), {[this] { show(parts_[0], false); }, [this] { giveKeyboardBack(); }}),
      notes_(frame, frontOf(documents), {[this] { show(parts_[1], false); }, [this] { giveKeyboardBack(); }}),
      statusBar_(
          frame, [&documents] { return statusOf(documents); }, lookInUse) {
  add(outline_, "Outline");
  add(notes_, "Notes");
  add(statusBar_, "StatusBar");
}

Parts::~Parts() = default;

void Parts::add(SV::Window & window, char const * setting) {
  parts_.push_back({&window, setting});
  if (settings_.IsOn(setting, true))
    window.Show();
}

void Parts::MakeToolBar(ISequence<ToolButton> buttons) {
  toolBar_ = std::make_unique<ToolBar>(frame_, std::move(buttons));
  add(*toolBar_, "ToolBar");
}

Commands Parts::GetCommands() {
  Command const next = withKey({MENU_VIEW, VIEW_NEXT, named(kNextPart), [this] { focusNext(); }}, SV::KEY_F1 + 5);
  return {commandFor(VIEW_TOOLBAR, kToolBar, parts_[3]), commandFor(VIEW_OUTLINE, kOutline, parts_[0]),
          commandFor(VIEW_NOTES, kNotes, parts_[1]), commandFor(VIEW_STATUSBAR, kStatusBar, parts_[2]), next};
}

Command Parts::commandFor(unsigned short id, Text name, Part const & part) {
  Command command = {MENU_VIEW, id, named(name), [this, part] { show(part, !IsShown(*part.window)); }};
  command.isChecked = [this, part] { return IsShown(*part.window); };
  return command;
}

bool Parts::IsShown(SV::Window const & part) const { return part.IsVisible(); }

void Parts::show(Part const & part, bool isShown) {
  bool const hadKeyboard = GetFocus() == part.window->GethWnd();
  if (isShown)
    part.window->Show();
  else
    part.window->Hide();
  settings_.SetOn(part.setting, isShown);
  Arrange();
  if (hadKeyboard)
    giveKeyboardBack();
  changed_();
}

void Parts::Arrange() {
  PartSizes sizes;
  sizes.toolBar = toolBar_ && IsShown(*toolBar_) ? toolBar_->GetHeight(frame_.GetOutputSizePixel().width) : 0;
  sizes.statusBar = IsShown(statusBar_) ? statusBar_.GetHeight() : 0;
  sizes.panes = scaledAcross(kPanes);
  sizes.hasOutline = IsShown(outline_);
  sizes.hasNotes = IsShown(notes_);
  Arrangement const places = arrange(frame_.GetOutputSizePixel(), sizes);
  if (toolBar_)
    place(*toolBar_, places.toolBar);
  place(statusBar_, places.statusBar);
  place(outline_, places.outline);
  place(notes_, places.notes);
  place(frame_.GetClient(), places.documents);
  fitClientBars(frame_);
}

void Parts::Refresh() {
  for (Part const & part : parts_)
    part.window->Invalidate();
}

void Parts::giveKeyboardBack() const {
  SV::Window * const front = frame_.GetActiveChild();
  SetFocus(front != nullptr ? front->GethWnd() : frame_.GethWnd());
}

KeyboardPlace Parts::keyboardPlace() const {
  HWND const focus = GetFocus();
  if (focus == outline_.GethWnd())
    return KeyboardPlace::Outline;
  return focus == notes_.GethWnd() ? KeyboardPlace::Notes : KeyboardPlace::Documents;
}

void Parts::focusNext() const {
  switch (nextPlace(keyboardPlace(), IsShown(outline_), IsShown(notes_))) {
  case KeyboardPlace::Outline: SetFocus(outline_.GethWnd()); break;
  case KeyboardPlace::Notes: SetFocus(notes_.GethWnd()); break;
  case KeyboardPlace::Documents: giveKeyboardBack(); break;
  }
}

} // namespace modeler
