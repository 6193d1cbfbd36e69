#include <QEvent>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QTimer>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>

#include "core/RunError.h"
#include "tests/ui/MainWindowFixture.h"
#include "tests/ui/ModalCloser.h"
#include "ui/frame/ShortcutBar.h"
#include "ui/print/PrintCommands.h"

namespace zw {
namespace {

using test::ModalCloser;

const QString kFileNotFound = "Zettelwerk: Laufzeitfehler '53':\n\nDatei nicht gefunden";

void throwFileNotFound() { throw RunError::fileNotFound(); }

class ThrowingFilter : public QObject
{
public:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::User)
            throwFileNotFound();
        return false;
    }
};

using FaultTrapTest = test::StartedWindow<installPrinting>;

// With the issuer list gone, "Aussteller wechseln" in the shortcut bar once ended the program with the receipt on it.
TEST_F(FaultTrapTest, AMissingIssuerListBehindTheShortcutBarIsAMessage)
{
    std::filesystem::remove(paths.dataFile("aussteller.dat"));
    form.setText(FormElement::Text12, "10,00");
    QImage icon;
    ModalCloser closer([&icon](QDialog* box) {
        for (auto* label : box->findChildren<QLabel*>())
            icon = label->pixmap().isNull() ? icon : label->pixmap().toImage();
    });
    window->findChild<QPushButton*>("Command6_1")->click();
    EXPECT_EQ(closer.messages, std::vector<QString>{kFileNotFound});
    EXPECT_EQ(icon, QApplication::style()->standardIcon(QStyle::SP_MessageBoxCritical).pixmap(32, 32).toImage());
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(form.text(FormElement::Text12), "10,00");
}

// Every kind of path from the toolkit into the program's code: the fault is a message and the program goes on.
TEST_F(FaultTrapTest, AFaultThroughEveryKindOfEntryPointIsAMessage)
{
    const std::vector<std::pair<const char*, std::function<void()>>> entries = {
        {"command", [&] {
             window->setCommand("report", throwFileNotFound);
             window->action("report")->trigger();
         }},
        {"shortcut key", [&] {
             window->shortcutBar().addKey({ShortcutPanel::Lists, 90}, "throwing", "", throwFileNotFound)->click();
         }},
        {"window opener", [&] {
             window->setWindowOpener("feldbezeichnung", throwFileNotFound);
             window->openWindow("feldbezeichnung");
         }},
        {"a part's own connection", [&] {
             // A signal the event loop delivers; a mouse click would leave the toolkit's event objects behind.
             auto* sender = new QObject(window.get());
             QObject::connect(sender, &QObject::objectNameChanged, window.get(), throwFileNotFound);
             QMetaObject::invokeMethod(sender, [sender] { sender->setObjectName("x"); }, Qt::QueuedConnection);
             ASSERT_TRUE(test::waitFor([sender] { return sender->objectName() == "x"; }));
         }},
        {"timer", [&] {
             bool ran = false;
             QTimer::singleShot(0, window.get(), [&] {
                 ran = true;
                 throwFileNotFound();
             });
             ASSERT_TRUE(test::waitFor([&] { return ran; }));
         }},
        {"event filter", [&] {
             ThrowingFilter filter;
             window->installEventFilter(&filter);
             QEvent event(QEvent::User);
             QApplication::sendEvent(window.get(), &event);
             window->removeEventFilter(&filter);
         }},
    };
    for (const auto& [kind, enter] : entries) {
        SCOPED_TRACE(kind);
        ModalCloser closer;
        enter();
        ASSERT_TRUE(test::waitFor([&] { return !closer.messages.empty(); }));
        EXPECT_EQ(closer.messages, std::vector<QString>{kFileNotFound});
        EXPECT_TRUE(window->isVisible());
    }
}

} // namespace
} // namespace zw
