#include "drawing/pngpicture.hpp"

#include "drawing/bitmappixels.hpp"
#include "handles/handle.hpp"

#include <cstring>
#include <wincodec.h>

// The toolchain's headers leave it out.
extern "C" HRESULT WINAPI WICCreateImagingFactory_Proxy(UINT version, IWICImagingFactory ** factory);

namespace SV::detail {

namespace {

template <class Interface> struct InterfaceKind : handles::NullKind<Interface *> {
  static void close(Interface * object) { object->Release(); }
};
template <class Interface> using Com = handles::Handle<InterfaceKind<Interface>>;

constexpr unsigned long kLongestSide = 4096;
constexpr unsigned char kBegin[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n', 0, 0, 0, 13, 'I', 'H', 'D', 'R'};

unsigned long bigEndian(std::byte const * bytes) {
  unsigned long value = 0;
  for (int i = 0; i < 4; ++i)
    value = value << 8 | static_cast<unsigned long>(bytes[i]);
  return value;
}

bool isSideAllowed(unsigned long side) { return side >= 1 && side <= kLongestSide; }

/// COM for this call, in whichever way the thread uses it already.
class ComUse {
public:
  ComUse() : entered_(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {}
  ComUse(ComUse const &) = delete;
  ComUse & operator=(ComUse const &) = delete;
  ~ComUse() {
    if (entered_)
      CoUninitialize();
  }

private:
  bool entered_;
};

/// Calls an operation that makes an object, whose place is its last argument.
template <class Interface, class Make> Com<Interface> made(Make const & make) {
  Interface * object = nullptr;
  return SUCCEEDED(make(&object)) ? Com<Interface>(object) : Com<Interface>();
}

/// The first picture of the file as pixels with multiplied colours; null when there is none.
Com<IWICFormatConverter> open(IWICImagingFactory & factory, std::span<std::byte const> file) {
  auto const stream = made<IWICStream>([&](IWICStream ** place) { return factory.CreateStream(place); });
  // The stream only reads.
  auto * const bytes = reinterpret_cast<BYTE *>(const_cast<std::byte *>(file.data()));
  if (!stream || FAILED(stream.get()->InitializeFromMemory(bytes, static_cast<DWORD>(file.size()))))
    return {};
  auto const decoder = made<IWICBitmapDecoder>([&](IWICBitmapDecoder ** place) {
    return factory.CreateDecoderFromStream(stream.get(), nullptr, WICDecodeMetadataCacheOnDemand, place);
  });
  if (!decoder)
    return {};
  auto const frame =
      made<IWICBitmapFrameDecode>([&](IWICBitmapFrameDecode ** place) { return decoder.get()->GetFrame(0, place); });
  auto converter =
      made<IWICFormatConverter>([&](IWICFormatConverter ** place) { return factory.CreateFormatConverter(place); });
  if (!frame || !converter ||
      FAILED(converter.get()->Initialize(frame.get(), GUID_WICPixelFormat32bppPBGRA, WICBitmapDitherTypeNone, nullptr,
                                         0, WICBitmapPaletteTypeCustom)))
    return {};
  return converter;
}

bool isOpaque(std::uint32_t pixel) { return pixel >> 24 == 0xFF; }

Image imageOf(IWICBitmapSource & source, Size const & size) {
  std::size_t const width = static_cast<std::size_t>(size.width);
  std::size_t const height = static_cast<std::size_t>(size.height);
  std::vector<std::uint32_t> pixels(width * height);
  if (FAILED(source.CopyPixels(nullptr, static_cast<UINT>(width * 4), static_cast<UINT>(pixels.size() * 4),
                               reinterpret_cast<BYTE *>(pixels.data()))))
    return Image();
  BitmapPixels target(size);
  if (!target)
    return Image();
  for (std::size_t y = 0; y < height; ++y)
    std::copy_n(pixels.data() + y * width, width, target.line(y));
  bool const opaque = std::all_of(pixels.begin(), pixels.end(), isOpaque);
  return Image(target.bitmap(), opaque ? IMAGE_MASK_NONE : IMAGE_MASK_ALPHA);
}

} // namespace

bool isSizeAllowed(std::span<std::byte const> header) {
  return std::memcmp(header.data(), kBegin, sizeof kBegin) == 0 &&
         isSideAllowed(bigEndian(header.data() + sizeof kBegin)) &&
         isSideAllowed(bigEndian(header.data() + sizeof kBegin + 4));
}

Image decodePng(std::span<std::byte const> file) {
  ComUse const com;
  auto const factory = made<IWICImagingFactory>(
      [](IWICImagingFactory ** place) { return WICCreateImagingFactory_Proxy(WINCODEC_SDK_VERSION, place); });
  if (!factory)
    return Image();
  auto const picture = open(*factory.get(), file);
  UINT width = 0;
  UINT height = 0;
  // A decoder may take another size from elsewhere in a damaged file.
  if (!picture || FAILED(picture.get()->GetSize(&width, &height)) || !isSideAllowed(width) || !isSideAllowed(height))
    return Image();
  return imageOf(*picture.get(), {static_cast<long>(width), static_cast<long>(height)});
}

} // namespace SV::detail
