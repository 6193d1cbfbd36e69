#pragma once

#include <QDialog>
#include <filesystem>
#include <functional>
#include <memory>

#include "app/CommonDialog.h"

class QListWidget;
class QPushButton;
class QUrl;

namespace zw {

class PdfExport;

// The window "PDF Export": makes the one-page document of the captured receipt, saves it and opens it.
class export_pdf : public QDialog
{
public:
    export_pdf(std::filesystem::path pictureFile, QWidget* parent = nullptr);
    ~export_pdf() override;

    CommonDialog& speicherDialog() { return m_speicherDialog; }
    // Opens a file or web address as the desktop does; tests put a recorder here.
    std::function<void(const QUrl&)> openUrl;

    // The address behind the reader download picture.
    static const char* const kReaderDownloadPage;

private:
    void cmdGo();

    std::filesystem::path m_pictureFile;
    std::unique_ptr<PdfExport> m_export;
    CommonDialog m_speicherDialog;
    QListWidget* m_lstLog = nullptr;
    QPushButton* m_command1 = nullptr;
};

} // namespace zw
