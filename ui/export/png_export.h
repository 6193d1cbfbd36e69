#pragma once

#include "ui/export/PictureExportWindow.h"

namespace zw {

// "Export als PNG-Datei": the receipt in a preview and the export button.
class png_export : public PictureExportWindow
{
public:
    png_export(const std::filesystem::path& picture, QWidget* parent, EncoderTable encoders = installedEncoders);

    // "&Exportieren"
    void Command1();

    void done(int result) override;
};

} // namespace zw
