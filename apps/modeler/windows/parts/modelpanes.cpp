#include "windows/parts/modelpanes.hpp"

#include "model/layout/wrapping.hpp"
#include "texts/modelnotes.hpp"
#include "texts/viewtexts.hpp"

#include <algorithm>
#include <utility>

namespace modeler {
namespace {

std::function<SV::String()> titled(Text which) {
  return [which] { return plain(text(which)); };
}

bool hasDuration(Node const & node) { return node.duration > 0 || node.seconds > 0; }

/// Of all nodes together.
SV::Image const & boxOf(ProcessModel const & model) {
  KivThemeManager & themes = KivThemeManager::Instance();
  auto const count = std::count_if(model.nodes.begin(), model.nodes.end(), hasDuration);
  bool const isAll = count == static_cast<std::ptrdiff_t>(model.nodes.size());
  return count == 0 || isAll ? themes.GetCheckBoxIconImg(count > 0) : themes.GetMixedCheckBoxIconImg();
}

} // namespace

OutlinePane::OutlinePane(SV::Window & frame, FrontModel front, Handlers const & handlers)
    : Pane(frame, titled(kOutline), handlers), front_(std::move(front)) {}

ISequence<Pane::Line> OutlinePane::lines() const {
  ProcessModel const * const model = front_();
  if (model == nullptr)
    return {{text(kNoModel)}};
  KivThemeManager & themes = KivThemeManager::Instance();
  ISequence<Line> result = {{model->name, {&themes.GetTreeGlyphImg(isOpen_), &boxOf(*model)}, 0}};
  if (!isOpen_)
    return result;
  for (Node const & node : model->nodes)
    result.push_back({node.text, {&themes.GetCheckBoxIconImg(hasDuration(node))}, 1});
  return result;
}

void OutlinePane::setOpen(bool isOpen) {
  isOpen_ = isOpen;
  Invalidate();
}

void OutlinePane::PressLine(std::size_t line) {
  if (line == 0)
    setOpen(!isOpen_);
}

bool OutlinePane::KeyInput(SV::KeyEvent const & event) {
  if (event.code == SV::KEY_LEFT || event.code == SV::KEY_RIGHT) {
    setOpen(event.code == SV::KEY_RIGHT);
    return true;
  }
  return Pane::KeyInput(event);
}

NotesPane::NotesPane(SV::Window & frame, FrontModel front, Handlers const & handlers)
    : Pane(frame, titled(kNotes), handlers), front_(std::move(front)) {}

ISequence<Pane::Line> NotesPane::lines() const {
  ProcessModel const * const model = front_();
  if (model == nullptr)
    return {{text(kNoModel)}};
  ISequence<SV::String> notes = notesOf(*model);
  if (notes.empty())
    notes.push_back(text(kNoNotes));
  ISequence<Line> result;
  for (SV::String const & note : notes)
    for (SV::String const & line : wrapped(note, lineWidth(), [this](SV::String const & t) { return textSize(t); }))
      result.push_back({line});
  return result;
}

} // namespace modeler
