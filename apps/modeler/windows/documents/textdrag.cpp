#include "windows/documents/textdrag.hpp"

#include "tools/winapi.hpp"

#include <cstdlib>

using SV::Point;
using SV::String;

namespace modeler {

void TextDrag::Press(Point const & position, String const & text) {
  Cancel();
  pressed_ = position;
  text_ = text;
}

void TextDrag::Move(SV::MouseEvent const & event) {
  if (!(event.held & SV::MOUSE_LEFT))
    text_ = String(); // the button went up over another window
  if (text_.Len() == 0 || (!isDragging_ && !isFarEnough(event.position)))
    return;
  if (!isDragging_) {
    KivDragManager::BeginDragAction(text_);
    source_.CaptureMouse();
    isDragging_ = true;
  }
  SetCursor(LoadCursorA(nullptr, targetAt(event.position) != nullptr ? IDC_HAND : IDC_NO));
}

void TextDrag::Release(Point const & position) {
  // What is dropped is what everybody sees as dragged.
  String const text = KivDragManager::GetDragContent();
  TextTarget * const target = KivDragManager::GetDragType() == KivDragText ? targetAt(position) : nullptr;
  if (Cancel() && target != nullptr)
    target->TakeText(text);
}

bool TextDrag::Cancel() {
  text_ = String();
  if (!isDragging_)
    return false;
  isDragging_ = false;
  KivDragManager::EndDragAction();
  source_.ReleaseMouse();
  return true;
}

bool TextDrag::isFarEnough(Point const & position) const {
  return std::abs(position.x - pressed_.x) > GetSystemMetrics(SM_CXDRAG) ||
         std::abs(position.y - pressed_.y) > GetSystemMetrics(SM_CYDRAG);
}

TextTarget * TextDrag::targetAt(Point const & position) const {
  return dynamic_cast<TextTarget *>(SV::Window::FindAt(source_.OutputToScreenPixel(position)));
}

} // namespace modeler
