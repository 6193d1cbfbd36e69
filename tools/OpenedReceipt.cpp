#include "tools/OpenedReceipt.h"

#include <QDate>
#include <QGuiApplication>
#include <cstdio>
#include <memory>

#include "app/QuittungLogic.h"
#include "core/FormHost.h"
#include "core/RunError.h"
#include "export/ImageFiles.h"
#include "ledger/ReceiptFile.h"
#include "print/Capture.h"
#include "print/PictureCommands.h"
#include "tools/Environment.h"

namespace zw::cli {
namespace {

// Nobody sits at a script: messages are dropped, questions answered "No", dialogs cancelled.
class QuietHost : public FormHost
{
public:
    void showMessage(std::string_view, MessageStyle, std::string_view) override {}
    int confirmQuestion(std::string_view, MessageStyle style, std::string_view) override
    {
        return style == MessageStyle::QuestionOkCancel ? kAnswerCancel : kAnswerNo;
    }
    std::optional<std::string> askText(std::string_view, MessageStyle, std::string_view, std::string_view) override
    {
        return std::nullopt;
    }
    void showNotice(Notice) override {}
    void beep() override {}
    void openWindow(std::string_view) override {}
};

// The start switches the logo and the signature on as the window does, failures passed over.
class StartPictures : public WindowParts
{
public:
    explicit StartPictures(PictureCommands& pictures) : m_pictures(pictures) {}
    void runStartStep(StartStep step) override
    {
        if (step == StartStep::SwitchLogoOn)
            switchOn(PictureKind::Logo);
        else if (step == StartStep::SwitchSignatureOn)
            switchOn(PictureKind::Signature);
    }

private:
    void switchOn(PictureKind kind)
    {
        try {
            m_pictures.switchOn(kind);
        } catch (const RunError&) {
        }
    }
    PictureCommands& m_pictures;
};

std::string today() { return QDate::currentDate().toString("dd.MM.yyyy").toStdString(); }

} // namespace

void prepareDisplaylessStart()
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& message) {
        if (type == QtCriticalMsg || type == QtFatalMsg)
            std::fputs((message.toStdString() + "\n").c_str(), stderr);
    });
}

OpenedReceipt::OpenedReceipt(CliContext& context, const std::filesystem::path& receipt)
    : application(startToolkit<QGuiApplication>()), paths(programPaths(context)), settings(settingsFolder(context))
{
    tellNoticesOnStandardError(settings);
    QuietHost host;
    PictureCommands pictures(form, paths, host);
    StartPictures parts(pictures);
    QuittungLogic logic(form, settings, paths, host, parts, today);
    logic.load();
    openReceiptFile(receipt, form);
}

cDIBSection OpenedReceipt::picture() const
{
    return surfaceFromImage(Capture(paths)(form));
}

} // namespace zw::cli
