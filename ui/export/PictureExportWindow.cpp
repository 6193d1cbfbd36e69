#include "ui/export/PictureExportWindow.h"

#include <QLabel>
#include <QPixmap>

#include "core/RunError.h"
#include "ui/frame/FileDialogs.h"
#include "ui/frame/MessageDialog.h"

namespace zw {

PictureExportWindow::PictureExportWindow(QWidget* parent, EncoderTable encoders)
    : QDialog(parent), m_session(std::move(encoders))
{
    m_dialog.setPresenter(fileDialogPresenter(this));
}

void PictureExportWindow::showMessage(std::string_view text, std::string_view title)
{
    MessageDialog::showMessage(this, text, MessageStyle::Error, title);
}

cDIBSection PictureExportWindow::LoadPicturePlus(const std::string& FileName)
{
    return loadPicturePlus(FileName, [this](std::string_view text, std::string_view title) { showMessage(text, title); });
}

void PictureExportWindow::startSession()
{
    if (reportStatus(m_session.startup(), [this](auto text, auto title) { showMessage(text, title); }) !=
        PictureStatus::Ok)
        showMessage(kNotInitializedText, kStatusTitle);
}

void PictureExportWindow::showPreview(QLabel* box, const std::filesystem::path& file)
{
    m_picture = LoadPicturePlus(file.string());
    if (m_picture.hDib() == 0)
        return;
    // Keep the picture's proportions inside the box.
    const double scale = std::min(static_cast<double>(box->width()) / m_picture.Width(),
                                  static_cast<double>(box->height()) / m_picture.Height());
    const int width = std::max(1, static_cast<int>(m_picture.Width() * scale));
    const int height = std::max(1, static_cast<int>(m_picture.Height() * scale));
    box->setPixmap(QPixmap::fromImage(imageFromSurface(m_picture.Resample(height, width))));
}

std::optional<int> PictureExportWindow::save(PictureFormat format, std::string_view extension, int quality)
{
    if (!m_session.ready())
        return std::nullopt;
    const std::string pattern = "*." + std::string(extension);
    m_dialog.Filter = "Images Files (" + pattern + ")|" + pattern;
    m_dialog.FileName = pattern;
    m_dialog.CancelError = true;
    m_dialog.Flags = CommonDialog::kOverwritePrompt;
    try {
        m_dialog.ShowSave();
    } catch (const RunError&) {
        return std::nullopt;
    }
    return savePicture(m_session, m_picture, m_dialog.FileName, format, quality,
                       [this](std::string_view text, std::string_view title) { showMessage(text, title); });
}

} // namespace zw
