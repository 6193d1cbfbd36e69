// libFuzzer target: any bytes as RTF. The reader must not crash, and what it reads must write and read back
// to the same paragraphs after the first round has settled what the writer cannot say.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "export/rtf/RtfReader.h"
#include "export/rtf/RtfWriter.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view source(reinterpret_cast<const char*>(data), size);
    const zw::rtf::Document once = zw::rtf::readRtf(zw::rtf::writeRtf(zw::rtf::readRtf(source)));
    if (zw::rtf::readRtf(zw::rtf::writeRtf(once)).paragraphs != once.paragraphs)
        std::abort();
    return 0;
}
