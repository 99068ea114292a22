#pragma once
/// \file
/// An application that records its calls, and windows between InitSV and DeInitSV.

#include "sv/sv.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

/// Keeps each call that it gets. Its Exception returns, after \p onException.
class TestApplication : public SV::MDIApplication {
public:
  struct ExceptionCall {
    long code;
    unsigned long arg;
    std::string name; ///< of the file, for EXC_RESOURCE_FILE_NOT_LOADED
  };

  bool QueryExit() override {
    ++exitQueries;
    return mayExit;
  }
  void SysChange(SV::SysChangeType type) override { changes.push_back(type); }
  void AppEvent(unsigned long event, void * data) override { appEvents.emplace_back(event, data); }
  void UserEvent(unsigned long event, void * data) override { userEvents.emplace_back(event, data); }
  void Activate() override { ++activations; }
  void Deactivate() override { ++deactivations; }
  void Main(int, char **) override {}
  void Exception(long code, unsigned long arg) override {
    bool const isFile = code == SV::EXC_RESOURCE_FILE_NOT_LOADED && arg != 0;
    exceptions.push_back({code, arg, isFile ? reinterpret_cast<char const *>(static_cast<std::uintptr_t>(arg)) : ""});
    if (onException)
      onException();
  }
  bool IsUserDefPaintMDIClient() override { return drawsBackground; }
  void PaintMDIClient(HWND hwnd) override {
    ++backgroundPaints;
    if (onPaintBackground)
      onPaintBackground(hwnd);
  }

  bool mayExit = true;
  bool drawsBackground = false;
  std::function<void()> onException;
  std::function<void(HWND)> onPaintBackground;

  int exitQueries = 0;
  int activations = 0;
  int deactivations = 0;
  int backgroundPaints = 0;
  std::vector<SV::SysChangeType> changes;
  std::vector<std::pair<unsigned long, void *>> appEvents;
  std::vector<std::pair<unsigned long, void *>> userEvents;
  std::vector<ExceptionCall> exceptions;
};

/// A test with the toolkit up.
class ToolkitTest : public testing::Test {
protected:
  ToolkitTest() {
    SV::SetProcessData(GetModuleHandleA(nullptr), GetCurrentThreadId(), SW_SHOWNORMAL);
    EXPECT_TRUE(SV::InitSV(0, nullptr));
  }
  ~ToolkitTest() override { SV::DeInitSV(); }

  TestApplication application;
};

/// All top-level windows of this process: the desktop is shared with others.
inline std::vector<HWND> ownTopLevelWindows() {
  std::vector<HWND> windows;
  EnumWindows(
      [](HWND window, LPARAM result) -> BOOL {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        if (process == GetCurrentProcessId())
          reinterpret_cast<std::vector<HWND> *>(result)->push_back(window);
        return TRUE;
      },
      reinterpret_cast<LPARAM>(&windows));
  return windows;
}

inline std::vector<HWND> visibleTopLevelWindows() {
  std::vector<HWND> windows = ownTopLevelWindows();
  std::erase_if(windows, [](HWND window) { return !IsWindowVisible(window); });
  return windows;
}

inline std::string textOf(SV::String const & text) {
  return std::string(text.c_str(), static_cast<std::size_t>(text.Len()));
}
