#pragma once

#include <QImage>
#include <QString>
#include <filesystem>
#include <map>

class QPainter;

namespace zw {

class ProgramPaths;
class ReceiptForm;
class ReceiptLook;

// Photographs the receipt area picSource: the background picture and every visible element of the layout
// table at its place, in the form's fonts, cut by its field as on the screen. No window is needed, so the
// command line and the tests capture the same picture the print command does.
class Capture
{
public:
    explicit Capture(const ProgramPaths& paths);

    // A picture of kFormWidthPixels x kFormHeightPixels, 24-bit colour.
    QImage operator()(const ReceiptForm& form) const;
    // The same composition on any painter whose unit is the form's pixel: on a PDF page the text stays text.
    void paint(QPainter& painter, const ReceiptForm& form) const;

    // The session's receipt colour: field backgrounds and the stamp area's picture go into the photograph too.
    void setLook(const ReceiptLook* look) { m_look = look; }

private:
    void drawLook(QPainter& painter, const ReceiptForm& form) const;
    // Pictures are read once and kept while their file stays unchanged; a print needs them every time.
    const QImage& picture(const std::filesystem::path& file) const;

    struct CachedPicture
    {
        std::filesystem::file_time_type modified;
        QImage image;
    };

    const ProgramPaths& m_paths;
    const ReceiptLook* m_look = nullptr;
    mutable std::map<std::filesystem::path, CachedPicture> m_pictures;
};

} // namespace zw
