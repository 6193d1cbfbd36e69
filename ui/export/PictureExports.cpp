#include <QClipboard>
#include <QGuiApplication>

#include "app/ProgramPaths.h"
#include "core/RunError.h"
#include "export/DibFile.h"
#include "export/ImageFiles.h"
#include "ui/export/ExportCommands.h"
#include "ui/frame/FaultTrap.h"
#include "ui/frame/MessageDialog.h"
#include "ui/frame/NoticeWindow.h"
#include "ui/frame/Quittung.h"
#include "ui/export/jpg_export.h"
#include "ui/export/png_export.h"

namespace zw {
namespace {

// The desktop's clipboard behind the surface's copy.
class DesktopClipboard : public DibClipboard
{
public:
    explicit DesktopClipboard(QWidget* parent) : m_parent(parent) {}

    void setBitmap(const cDIBSection& surface) override
    {
        QGuiApplication::clipboard()->clear();
        QGuiApplication::clipboard()->setImage(imageFromSurface(surface));
    }
    void showMessage(std::string_view text) override
    {
        MessageDialog::showMessage(m_parent, text, MessageStyle::Information, "Zettelwerk");
    }

private:
    QWidget* m_parent;
};

class PictureExports
{
public:
    explicit PictureExports(const ExportContext& context) : m_context(context) {}

    void bmpdatei()
    {
        const cDIBSection picture = capture();
        CommonDialog& dialog = m_context.window.fileDialog("bmpdatei");
        dialog.DialogTitle = "Zettelwerk - Bild als Bitmap speichern";
        dialog.Filter = "Bitmap (*.bmp)|*.bmp";
        dialog.DefaultExt = "BMP";
        // A cancelled dialog or a failed write ends the command without a word.
        dialog.CancelError = true;
        try {
            dialog.ShowSave();
            NoticeWindow::run(&m_context.window, Notice::export1);
            saveBitmapFile(picture, dialog.FileName);
        } catch (const RunError&) {
        }
    }

    void jpeg()
    {
        if (!handOver())
            return;
        NoticeWindow::run(&m_context.window, Notice::export2, [this] {
            jpg_export window(handOverFile(), &m_context.window);
            window.exec();
        });
    }

    void pngdatei()
    {
        if (!handOver())
            return;
        png_export window(handOverFile(), &m_context.window);
        window.exec();
    }

    void quikop()
    {
        NoticeWindow::run(&m_context.window, Notice::kopieren1);
        DesktopClipboard clipboard(&m_context.window);
        capture().CopyToClipboard(clipboard, /*AsBitmap=*/true);
    }

private:
    cDIBSection capture() const { return surfaceFromImage(m_context.capture()); }
    std::filesystem::path handOverFile() const { return m_context.paths.home() / "temp.bmp"; }

    // The photograph into temp.bmp, which the preview window reads. The write has no trap of its own.
    bool handOver()
    {
        return faulttrap::trapped([this] {
            saveBitmapFile(capture(), handOverFile());
            return true;
        })();
    }

    ExportContext m_context;
};

} // namespace

void installPictureExports(const ExportContext& context)
{
    auto exports = std::make_shared<PictureExports>(context);
    context.window.setCommand("bmpdatei", [exports] { exports->bmpdatei(); });
    context.window.setCommand("jpeg", [exports] { exports->jpeg(); });
    context.window.setCommand("pngdatei", [exports] { exports->pngdatei(); });
    context.window.setCommand("quikop", [exports] { exports->quikop(); });
}

} // namespace zw
