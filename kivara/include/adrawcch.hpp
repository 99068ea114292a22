#pragma once
/// \file
/// Two caches for drawing: bitmaps of the language packs, and a buffer to paint into without flicker. Main thread.
///
/// \code
///   void Paint(SV::OutputDevice & device, SV::Rectangle const &) override {
///     SV::VirtualDevice & buffer = KivPaintBuffer::VD();  // white, as large as all screens together
///     buffer.DrawBitmap({0, 0}, KivGDICache::Instance().getBitmap(17));
///     SV::Size const size = GetOutputSizePixel();
///     device.DrawOutDev({0, 0}, size, {0, 0}, size, buffer);
///   }
/// \endcode

#include "aevent.hpp"
#include "export.hpp"
#include "sv/bitmap.hpp"
#include "sv/virtualdevice.hpp"
#include "tools/containers.hpp"

namespace kivara {
template <class T> class CleanedUp;
}

/// Bitmaps from resources, each loaded once. AppExit empties the cache, and the clean-up deletes it; whoever asks after that
/// gets a new one.
class KIV_API KivGDICache : public KivEventListener {
public:
  static KivGDICache & Instance();

  /// A copy has the same pictures in bitmaps of its own, and keeps them through AppExit.
  KivGDICache(KivGDICache const & other);
  /// Bitmaps that this object has handed out before are gone.
  KivGDICache & operator=(KivGDICache const & other);
  ~KivGDICache() override;

  /// The bitmap of the resource 0x2000000 + \p id. It stays this object, with the pixels of the first call, until AppExit,
  /// also when the language has changed meanwhile.
  ///
  /// For a missing resource Application::Exception is called, as for SV::Bitmap; if that returns, the result is the empty
  /// bitmap, which is kept too.
  SV::Bitmap const & getBitmap(unsigned short id);

private:
  friend class kivara::CleanedUp<KivGDICache>;
  using Bitmaps = KivValueDelMap<unsigned short, SV::Bitmap *>;

  KivGDICache();
  void _onExit(KivEvent * event);
  static Bitmaps copyOf(Bitmaps const & others);

  Bitmaps bitmaps_;
};

/// One device in memory, for all windows to paint into.
class KIV_API KivPaintBuffer {
public:
  /// The device, of 32 bits a pixel, as large as the rectangle around all screens is at this moment, and all white. It has
  /// no pen, a white brush, no limit and pixels as its unit; its font is that of its last user.
  ///
  /// What was drawn on it before is gone, so it is asked for anew for each paint, and not while another one is using it.
  /// The clean-up at AppExit deletes it; whoever asks after that gets a new one.
  ///
  /// When the system refuses the size, Application::Exception is called, as for SV::VirtualDevice; if that returns, the
  /// device has the size that it had.
  static SV::VirtualDevice & VD();

private:
  static SV::VirtualDevice * aInstance;
};
