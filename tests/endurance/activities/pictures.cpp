// Caches and buffers of drawing, bitmaps of the program, pictures of the archive; the tray icon, and what is dragged.

#include "../activity.hpp"

#include "adragman.hpp"
#include "adrawcch.hpp"
#include "asystray.hpp"
#include "sv/icon.hpp"
#include "sv/imagepool.hpp"

namespace endurance {
namespace {

constexpr unsigned short kCloseCross = 0x2BBB; // a bitmap of the language packs

class Pictures : public Activity {
public:
  bool round() override {
    SV::Bitmap const & cross = KivGDICache::Instance().getBitmap(kCloseCross);
    expect(!cross.IsEmpty(), "a bitmap is missing");
    KivGDICache const copy(KivGDICache::Instance());
    SV::VirtualDevice & buffer = KivPaintBuffer::VD();
    buffer.ChangePen(SV::Pen(SV::COL_RED));
    buffer.ChangeFillInBrush(SV::Brush(SV::COL_GREEN));
    buffer.DrawRect({{0, 0}, {100, 100}});
    buffer.DrawText({5, 5}, "Buffer");
    buffer.DrawBitmap({20, 20}, cross);
    drawSmall(buffer, cross);
    return true;
  }

private:
  static void drawSmall(SV::VirtualDevice const & buffer, SV::Bitmap const & cross) {
    SV::VirtualDevice small;
    expect(small.SetOutputSizePixel({64, 64}), "there is no device in memory");
    small.DrawOutDev({0, 0}, {64, 64}, {0, 0}, {100, 100}, buffer);
    SV::Image picture = SV::ImagePool::GetImage("control/close.png");
    expect(!picture.IsEmpty() && picture.Rescale({32, 32}), "a picture of the archive is missing");
    small.DrawImage({4, 4}, picture);
    SV::Image(cross.Clone(), SV::IMAGE_MASK_COLOR, SV::COL_WHITE).Crop({{0, 0}, {4, 4}});
    expect(!small.GetBitmap({0, 0}, {64, 64}).IsEmpty(), "nothing was drawn");
  }
};

class Tray : public Activity {
public:
  bool round() override {
    KivSystemTray icon;
    expect(icon.Create(nullptr, 0x8001, "Endurance", first_, 1) == 1, "the shell has taken no icon");
    expect(icon.SetTooltipText("Another text") == 1 && icon.SetIcon(second_) == 1, "the icon was not changed");
    expect(icon.ShowBalloon("A balloon", "Endurance", 1, 10) == 1, "there is no balloon");
    HICON icons[] = {first_.GethIcon(), second_.GethIcon()};
    expect(icon.SetIconList(icons, 1) == 1 && icon.Animate(20, 0) == 1 && icon.StepAnimation() == 1 &&
               icon.StopAnimation() == 1,
           "the icon does not move");
    expect(icon.HideIcon() == 1 && icon.ShowIcon() == 1 && icon.RemoveIcon() == 1, "the icon is not gone");
    return true;
  }

private:
  SV::Icon first_{SV::ICON_STYLE_INFO};
  SV::Icon second_{SV::ICON_STYLE_WARNING};
};

class Drags : public Activity {
public:
  bool round() override {
    KivDragManager::BeginDragAction("a text that is dragged from one window to the other");
    expect(KivDragManager::ExistsDragContent() && KivDragManager::GetDragType() == KivDragText, "nothing is dragged");
    expect(KivDragManager::GetClipboardFormatID() != 0, "the clipboard has no such format");
    KivDragManager::EndDragAction();
    expect(!KivDragManager::ExistsDragContent(), "something is still dragged");
    return true;
  }
};

} // namespace

ActivityPtr paintPictures(Place const &) { return std::make_unique<Pictures>(); }
ActivityPtr showTrayIcon(Place const &) { return std::make_unique<Tray>(); }
ActivityPtr dragTexts(Place const &) { return std::make_unique<Drags>(); }

} // namespace endurance
