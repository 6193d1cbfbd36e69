#include <QImage>
#include <QProcess>
#include <filesystem>
#include <gtest/gtest.h>

namespace {

// The distribution the build generated: the stamp pictures and the template to scan in.
const std::filesystem::path kDistribution = ZW_DIST_DIR;

TEST(PrintAssets, StampPicturesFillTheStampFieldAndOnlyTheEmptyOneIsBlank)
{
    const std::pair<const char*, bool> rows[] = {
        {"stempel_leer.jpg", false}, {"stempel_original.jpg", true}, {"stempel_kopie.jpg", true}};
    for (auto [name, inked] : rows) {
        SCOPED_TRACE(name);
        QImage picture(QString::fromStdString((kDistribution / name).string()));
        ASSERT_FALSE(picture.isNull());
        EXPECT_EQ(picture.size(), QSize(116, 37));
        int dark = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                dark += qGray(picture.pixel(x, y)) < 160;
        EXPECT_EQ(dark > 100, inked);
    }
}

TEST(PrintAssets, TheTemplateIsAValidPdfWithItsHeading)
{
    const QString pdf = QString::fromStdString((kDistribution / "ZW-Schablone.pdf").string());
    QProcess qpdf;
    qpdf.start("qpdf", {"--check", pdf});
    qpdf.waitForFinished(30000);
    EXPECT_EQ(qpdf.exitCode(), 0) << qpdf.readAllStandardOutput().toStdString();
    QProcess text;
    text.start("pdftotext", {pdf, "-"});
    text.waitForFinished(30000);
    const QString words = QString::fromUtf8(text.readAllStandardOutput());
    EXPECT_TRUE(words.contains("Schablone zum Einscannen"));
    EXPECT_TRUE(words.contains("313 x 97 Pixel"));
}

} // namespace
