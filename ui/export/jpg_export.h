#pragma once

#include "ui/export/PictureExportWindow.h"

class QLabel;
class QScrollBar;

namespace zw {

// "Quittung als JPG-Datei exportieren...": the receipt in a preview, a quality bar and the save button.
class jpg_export : public PictureExportWindow
{
public:
    jpg_export(const std::filesystem::path& picture, QWidget* parent, EncoderTable encoders = installedEncoders);

    QScrollBar* HScroll1() const { return m_quality; }
    // "Beleg als JPG &speichern"
    void xpButton3();

private:
    void showQuality(int value);

    QScrollBar* m_quality = nullptr;
    QLabel* m_qualityLabel = nullptr;
};

} // namespace zw
