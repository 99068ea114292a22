#pragma once
/// \file
/// The windows of an MDI application: a frame, its client area, and the children in it.

#include "sv/window.hpp"

#include <memory>

namespace SV {

class MDIChild;
class MDIFrame;
class MenuBar;

/// The area of a frame in which the children lie. Its background is the application's business when
/// MDIApplication::IsUserDefPaintMDIClient says so.
class SV_API MDIClient : public Window {
public:
  explicit MDIClient(MDIFrame & frame); ///< made and owned by its frame
  ~MDIClient() override;

protected:
  long long HandleMessage(unsigned message, unsigned long long wParam, long long lParam) override;
};

/// The main window. The first one becomes the application window.
class SV_API MDIFrame : public Window {
public:
  explicit MDIFrame(String const & title); ///< hidden at first
  ~MDIFrame() override;

  MDIClient & GetClient() { return *client_; } ///< lives as long as the frame

  /// The child in front; null when there is none.
  MDIChild * GetActiveChild() const;

  /// The bar is not owned; null takes it away. The former one is the result. What the user chooses reaches Menu::Select
  /// of the menu that the item is in.
  MenuBar * SetMenuBar(MenuBar * bar);
  MenuBar * GetMenuBar() const { return menuBar_; }

protected:
  long long HandleMessage(unsigned message, unsigned long long wParam, long long lParam) override;
  long long DefaultProcedure(unsigned message, unsigned long long wParam, long long lParam) override;

private:
  void takeMenuOff(MenuBar * bar);

  std::unique_ptr<MDIClient> client_;
  MenuBar * menuBar_ = nullptr;
};

/// A document's window. Show brings it to the front.
class SV_API MDIChild : public Window {
public:
  explicit MDIChild(MDIFrame & frame, String const & title = String()); ///< the frame has to outlive it
  ~MDIChild() override;

  void Show() override;

protected:
  void Destroy() override;
  long long DefaultProcedure(unsigned message, unsigned long long wParam, long long lParam) override;
};

} // namespace SV
