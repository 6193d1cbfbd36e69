#pragma once

#include "export/BitmapFile.h"

#include <gtest/gtest.h>

#include "tests/app/PeerProgram.h"
#include "tests/app/TempFolder.h"

#include <filesystem>
#include <sstream>
#include <string>

namespace zw::test {

// Page 1 of a PDF as poppler draws it: width, height and RGB bytes. The PPM goes next to the PDF.
inline Bitmap renderFirstPage(const std::filesystem::path& pdf, int dotsPerInch)
{
    const std::string prefix = pdf.string() + ".page";
    const CommandResult result = run("pdftoppm -r " + std::to_string(dotsPerInch) +
                                     " -f 1 -l 1 -singlefile '" + pdf.string() + "' '" + prefix + "' 2>&1");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.output, "") << "pdftoppm complained";
    const std::string ppm = readBytes(prefix + ".ppm");
    std::istringstream header(ppm);
    std::string magic;
    int maximum = 0;
    Bitmap page;
    header >> magic >> page.width >> page.height >> maximum;
    EXPECT_EQ(magic, "P6");
    if (header)
        page.pixels.assign(ppm.begin() + static_cast<std::ptrdiff_t>(header.tellg()) + 1, ppm.end());
    return page;
}

} // namespace zw::test
