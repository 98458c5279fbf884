#include "tests/window/picture_file.h"

#include <objbase.h>
#include <wincodec.h>

namespace {

constexpr UINT PixelSize = 4;

// A reference to a component that is given back in the end.
template <typename Interface>
struct Owned {
    Interface* object = nullptr;

    Owned() = default;
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;
    ~Owned() {
        if (object != nullptr) {
            object->Release();
        }
    }
    Interface* operator->() const { return object; }
};

bool MakeFactory(Owned<IWICImagingFactory>& factory) {
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    return SUCCEEDED(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                                      IID_IWICImagingFactory,
                                      reinterpret_cast<void**>(&factory.object)));
}

UINT Stride(const Picture& picture) {
    return static_cast<UINT>(picture.width) * PixelSize;
}

UINT Size(const Picture& picture) {
    return Stride(picture) * static_cast<UINT>(picture.height);
}

} // namespace

bool WritePicture(const std::wstring& path, const Picture& picture) {
    Owned<IWICImagingFactory> factory;
    Owned<IWICStream> stream;
    Owned<IWICBitmapEncoder> encoder;
    Owned<IWICBitmapFrameEncode> frame;
    Owned<IWICBitmap> bitmap;
    std::vector<std::uint32_t> pixels = picture.pixels;
    return MakeFactory(factory) && SUCCEEDED(factory->CreateStream(&stream.object)) &&
           SUCCEEDED(stream->InitializeFromFilename(path.c_str(), GENERIC_WRITE)) &&
           SUCCEEDED(factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, &encoder.object)) &&
           SUCCEEDED(encoder->Initialize(stream.object, WICBitmapEncoderNoCache)) &&
           SUCCEEDED(encoder->CreateNewFrame(&frame.object, nullptr)) &&
           SUCCEEDED(frame->Initialize(nullptr)) &&
           SUCCEEDED(frame->SetSize(static_cast<UINT>(picture.width),
                                    static_cast<UINT>(picture.height))) &&
           SUCCEEDED(factory->CreateBitmapFromMemory(
               static_cast<UINT>(picture.width), static_cast<UINT>(picture.height),
               GUID_WICPixelFormat32bppBGR, Stride(picture), Size(picture),
               reinterpret_cast<BYTE*>(pixels.data()), &bitmap.object)) &&
           SUCCEEDED(frame->WriteSource(bitmap.object, nullptr)) && SUCCEEDED(frame->Commit()) &&
           SUCCEEDED(encoder->Commit());
}

std::optional<Picture> ReadPicture(const std::wstring& path) {
    Owned<IWICImagingFactory> factory;
    Owned<IWICBitmapDecoder> decoder;
    Owned<IWICBitmapFrameDecode> frame;
    Owned<IWICFormatConverter> converter;
    UINT width = 0;
    UINT height = 0;
    if (!MakeFactory(factory) ||
        FAILED(factory->CreateDecoderFromFilename(path.c_str(), nullptr, GENERIC_READ,
                                                  WICDecodeMetadataCacheOnDemand,
                                                  &decoder.object)) ||
        FAILED(decoder->GetFrame(0, &frame.object)) ||
        FAILED(factory->CreateFormatConverter(&converter.object)) ||
        FAILED(converter->Initialize(frame.object, GUID_WICPixelFormat32bppBGR,
                                     WICBitmapDitherTypeNone, nullptr, 0,
                                     WICBitmapPaletteTypeCustom)) ||
        FAILED(converter->GetSize(&width, &height))) {
        return std::nullopt;
    }
    Picture picture = {static_cast<int>(width), static_cast<int>(height), {}};
    picture.pixels.resize(std::size_t{width} * height);
    if (FAILED(converter->CopyPixels(nullptr, Stride(picture), Size(picture),
                                     reinterpret_cast<BYTE*>(picture.pixels.data())))) {
        return std::nullopt;
    }
    for (std::uint32_t& pixel : picture.pixels) {
        pixel &= 0xFFFFFF;
    }
    return picture;
}
