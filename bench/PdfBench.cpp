#include "export/BitmapFile.h"
#include "export/clsPDF.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <random>
#include <string>

namespace zw {
namespace {

constexpr std::int32_t kReceiptWidth = 570;
constexpr std::int32_t kReceiptHeight = 429;

LocalDateTime fixedMoment()
{
    return {2024, 1, 2, 3, 4, 5};
}

// Looks like a captured receipt: white paper, a frame, rows of dark glyph strokes.
Bitmap receiptPicture()
{
    Bitmap picture{
        kReceiptWidth, kReceiptHeight,
        std::vector<std::uint8_t>(static_cast<std::size_t>(kReceiptWidth * kReceiptHeight * 3), 255)};
    std::mt19937 random(42);
    auto paint = [&](std::int32_t x, std::int32_t y, std::uint8_t r, std::uint8_t g, std::uint8_t b) {
        std::uint8_t* pixel = &picture.pixels[static_cast<std::size_t>((y * kReceiptWidth + x) * 3)];
        pixel[0] = r;
        pixel[1] = g;
        pixel[2] = b;
    };
    for (std::int32_t x = 0; x < kReceiptWidth; ++x) {
        for (std::int32_t y : {4, 5, 6, kReceiptHeight - 7, kReceiptHeight - 6, kReceiptHeight - 5})
            paint(x, y, 0, 0, 128);
    }
    for (std::int32_t row = 20; row + 10 < kReceiptHeight; row += 24) {
        for (std::int32_t y = row; y < row + 10; ++y) {
            for (std::int32_t x = 20; x < kReceiptWidth - 20; ++x) {
                if (random() % 3 == 0)
                    paint(x, y, 0, 0, 0);
            }
        }
    }
    return picture;
}

// A picture without any two equal neighbours: the encoder's worst case, written raw.
Bitmap noisePicture()
{
    Bitmap picture{kReceiptWidth, kReceiptHeight,
                   std::vector<std::uint8_t>(static_cast<std::size_t>(kReceiptWidth * kReceiptHeight * 3))};
    std::mt19937 random(7);
    for (auto& byte : picture.pixels)
        byte = static_cast<std::uint8_t>(random());
    return picture;
}

void picturePage(benchmark::State& state, const Bitmap& picture, bool gray)
{
    std::size_t size = 0;
    for (auto _ : state) {
        clsPDF pdf(fixedMoment);
        pdf.DrawPicture(10, 10, kReceiptWidth, kReceiptHeight, picture, gray);
        pdf.PrintLine("");
        const std::string document = pdf.Value();
        size = document.size();
        benchmark::DoNotOptimize(document.data());
    }
    state.counters["bytes"] = static_cast<double>(size);
}

void BM_PicturePage(benchmark::State& state)
{
    picturePage(state, receiptPicture(), /*gray=*/false);
}
BENCHMARK(BM_PicturePage)->Unit(benchmark::kMillisecond);

void BM_PicturePageGray(benchmark::State& state)
{
    picturePage(state, receiptPicture(), /*gray=*/true);
}
BENCHMARK(BM_PicturePageGray)->Unit(benchmark::kMillisecond);

void BM_PicturePageNoise(benchmark::State& state)
{
    picturePage(state, noisePicture(), /*gray=*/false);
}
BENCHMARK(BM_PicturePageNoise)->Unit(benchmark::kMillisecond);

// The whole way from a bitmap file to the document's bytes, as a peer that converts a picture file does it.
// ZW_BENCH_PICTURE names the file; without it a receipt-like picture is drawn in memory and not read.
void BM_PicturePageFromFile(benchmark::State& state)
{
    const char* file = std::getenv("ZW_BENCH_PICTURE");
    if (file == nullptr) {
        state.SkipWithError("ZW_BENCH_PICTURE is not set");
        return;
    }
    for (auto _ : state) {
        const Bitmap picture = readBitmapFile(file);
        clsPDF pdf(fixedMoment);
        pdf.setWidth(static_cast<std::int16_t>(picture.width));
        pdf.setHeight(static_cast<std::int16_t>(picture.height));
        pdf.DrawPicture(0, 0, static_cast<std::int16_t>(picture.width),
                        static_cast<std::int16_t>(picture.height), picture, /*gray=*/false);
        pdf.PrintLine("");
        const std::string document = pdf.Value();
        benchmark::DoNotOptimize(document.data());
    }
}
BENCHMARK(BM_PicturePageFromFile)->Unit(benchmark::kMillisecond);

void BM_TextDocument100Pages(benchmark::State& state)
{
    std::vector<std::string> lines;
    for (int line = 0; line < 72 * 100; ++line)
        lines.push_back("Pos. " + std::to_string(line) +
                        "  Quittung (Kopie) über 1.234,56 € inkl. 19 % MwSt \\ bar");
    for (auto _ : state) {
        clsPDF pdf(fixedMoment);
        for (const std::string& line : lines)
            pdf.PrintLine(line);
        const std::string document = pdf.Value();
        benchmark::DoNotOptimize(document.data());
    }
}
BENCHMARK(BM_TextDocument100Pages)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace zw
