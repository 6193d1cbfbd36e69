#pragma once

#include <QImage>
#include <QString>
#include <filesystem>
#include <map>

namespace zw {

class ProgramPaths;
class ReceiptForm;

// Photographs the receipt area picSource: the background picture and every visible element of the layout
// table at its place, in the form's fonts, cut by its field as on the screen. No window is needed, so the
// command line and the tests capture the same picture the print command does.
class Capture
{
public:
    explicit Capture(const ProgramPaths& paths);

    // A picture of kFormWidthPixels x kFormHeightPixels, 24-bit colour.
    QImage operator()(const ReceiptForm& form) const;

private:
    // Pictures are read once and kept while their file stays unchanged; a print needs them every time.
    const QImage& picture(const std::filesystem::path& file) const;

    struct CachedPicture
    {
        std::filesystem::file_time_type modified;
        QImage image;
    };

    const ProgramPaths& m_paths;
    mutable std::map<std::filesystem::path, CachedPicture> m_pictures;
};

} // namespace zw
