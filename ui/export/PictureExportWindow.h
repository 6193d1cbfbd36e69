#pragma once

#include <QDialog>
#include <filesystem>
#include <string>
#include <string_view>

#include "app/CommonDialog.h"
#include "export/ImageFiles.h"
#include "export/cDIBSection.h"

class QLabel;

namespace zw {

// What jpg_export and png_export share: the encoder session started on opening, the preview of the hand-over
// file, the window's own save dialog and the message boxes of the picture calls.
class PictureExportWindow : public QDialog
{
public:
    // Loads a picture file; a failure goes through the error report and gives an empty picture.
    cDIBSection LoadPicturePlus(const std::string& FileName);

    bool ready() const { return m_session.ready(); }
    CommonDialog& dialog() { return m_dialog; }
    const cDIBSection& picture() const { return m_picture; }

protected:
    PictureExportWindow(QWidget* parent, EncoderTable encoders);

    // Starts the session; a failed start is reported and leaves the window unable to save.
    void startSession();
    // The hand-over file into the preview box, shrunk to fit it.
    void showPreview(QLabel* box, const std::filesystem::path& file);
    // The save dialog for the given extension, then the picture written. Returns the status, or nothing if
    // the window cannot save or the user cancelled.
    std::optional<int> save(PictureFormat format, std::string_view extension, int quality);
    void showMessage(std::string_view text, std::string_view title);
    void endSession() { m_session.shutdown(); }

private:
    PictureSession m_session;
    CommonDialog m_dialog;
    cDIBSection m_picture;
};

} // namespace zw
