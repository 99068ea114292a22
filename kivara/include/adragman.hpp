#pragma once
/// \file
/// What is being dragged inside the program, for the window of the program that it is dropped on.
///
/// The window that the drag begins in says what is dragged, and says when the drag is over, however it ends. Every other
/// window may ask meanwhile. What goes through the system, to another program or through the clipboard, is not kept here;
/// by this format a target knows that the data of the system comes from such a drag.
///
/// \code
///   void Picture::MouseMove(SV::MouseEvent const & event) {
///     if (KivDragManager::ExistsDragContent() || !(event.held & SV::MOUSE_LEFT))
///       return; // each further move would begin another drag
///     KivDragManager::BeginDragAction(textUnder(event.position));
///     CaptureMouse();
///   }
///   void Picture::MouseButtonUp(SV::MouseEvent const &) {
///     ReleaseMouse();
///     if (KivDragManager::GetDragType() == KivDragText && isUnderMouse(list_))
///       list_.take(KivDragManager::GetDragContent());
///     KivDragManager::EndDragAction();
///   }
///   void Picture::CaptureLost() { KivDragManager::EndDragAction(); } // a box has opened
/// \endcode
///
/// There is one state for the process, and no stack: the drag that begins last is the one that everybody sees, and its end,
/// or that of an earlier one, ends all. It knows nothing of windows: one that dies while it drags has to end the drag.
///
/// Main thread only: there is no lock.

#include "export.hpp"
#include "tools/string.hpp"

/// What is dragged.
enum KivDragType {
  KivDragNothing = 0,
  KivDragText = 1, ///< a text
};

/// The drag of the program. Static operations only; there is no need for an object of it.
class KIV_API KivDragManager {
public:
  KivDragManager(KivDragManager const &) = default;
  KivDragManager & operator=(KivDragManager const &) = default;
  ~KivDragManager() = default;

  /// The number of the clipboard format "KivDragContent", which is the same for all programs of the session. It is
  /// registered in the first call.
  /// \return 0 if the system refuses; the next call then tries again
  static long GetClipboardFormatID();

  /// Begins to drag a text, which may be empty; one that was dragged is forgotten.
  static void BeginDragAction(SV::String const & text);

  /// Nothing is dragged from now on, and the text is forgotten.
  static void EndDragAction();

  static bool ExistsDragContent(); ///< whether anything is dragged, even the empty text
  static KivDragType GetDragType();

  /// The text that is dragged; the empty string if nothing is.
  /// \return what the next begin or end changes: copy it to keep it
  static SV::String const & GetDragContent();

private:
  KivDragManager() = default;

  static KivDragManager g_aInstance;

  long clipboardFormat = 0; ///< 0 until it is registered
  KivDragType dragType = KivDragNothing;
  SV::String dragContent;
};
