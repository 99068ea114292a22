#include "adrawcch.hpp"

#include "base/textids.hpp"
#include "sv/system.hpp"
#include "ui/cleanedup.hpp"

#include <memory>

namespace {

constinit kivara::CleanedUp<KivGDICache> theCache;

constexpr unsigned short kDepth = 0x20;

/// Nothing that its last user has left behind keeps any of it from being cleaned.
void clean(SV::VirtualDevice & device) {
  device.ChangeClipRegion(SV::Region());
  device.ChangeMapMode(SV::MapMode());
  device.ChangePen(SV::Pen());
  device.ChangeFillInBrush(SV::Brush(SV::Color(0xFFFF, 0xFFFF, 0xFFFF)));
  device.DrawRect({{0, 0}, device.GetOutputSizePixel()});
}

} // namespace

KivGDICache & KivGDICache::Instance() { return theCache.get(); }

KivGDICache::KivGDICache() { setEventHandler<&KivGDICache::_onExit>(KIV_EVENT_AppExit); }

KivGDICache::KivGDICache(KivGDICache const & other) : KivEventListener(other), bitmaps_(copyOf(other.bitmaps_)) {}

KivGDICache & KivGDICache::operator=(KivGDICache const & other) {
  if (this != &other) {
    Bitmaps copy = copyOf(other.bitmaps_);
    bitmaps_.swap(copy);
  }
  return *this;
}

KivGDICache::~KivGDICache() { manualSignOff(); }

KivGDICache::Bitmaps KivGDICache::copyOf(Bitmaps const & others) {
  Bitmaps copy;
  for (auto const & [id, bitmap] : others)
    copy.try_emplace(id, nullptr).first->second = new SV::Bitmap(*bitmap);
  return copy;
}

SV::Bitmap const & KivGDICache::getBitmap(unsigned short id) {
  auto const known = bitmaps_.find(id);
  if (known != bitmaps_.end())
    return *known->second;
  auto loaded = std::make_unique<SV::Bitmap>(SV::ResId(kivara::texts::kStringType + id));
  // The exception for a missing resource may have shown a box, and what was painted then may have asked for this bitmap.
  auto const [place, isNew] = bitmaps_.try_emplace(id, loaded.get());
  if (isNew)
    static_cast<void>(loaded.release());
  return *place->second;
}

void KivGDICache::_onExit(KivEvent *) { bitmaps_.clear(); }

SV::VirtualDevice * KivPaintBuffer::aInstance = nullptr;

SV::VirtualDevice & KivPaintBuffer::VD() {
  if (aInstance == nullptr) {
    aInstance = new SV::VirtualDevice(kDepth);
    kivara::deleteAtCleanUp(aInstance);
  }
  SV::Size const wanted = SV::System::GetVirtualScreenSizePixel();
  if (!(aInstance->GetOutputSizePixel() == wanted))
    aInstance->SetOutputSizePixel(wanted, true);
  clean(*aInstance);
  return *aInstance;
}
