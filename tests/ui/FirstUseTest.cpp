// What a new user meets first, in the main window as the distribution installs it.
#include <QAction>
#include <QApplication>
#include <QCalendarWidget>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QScopeGuard>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QToolBox>
#include <QToolButton>
#include <gtest/gtest.h>

#include "app/SmallFiles.h"
#include "print/FormFonts.h"
#include "tests/ui/MainWindowFixture.h"
#include "tests/ui/ModalCloser.h"
#include "ui/print/PrintCommands.h"
#include "ui/receipt/ReceiptFormView.h"
#include "ui/frame/TextSpinBox.h"
#include "ui/print/druckmenue2011.h"

namespace zw {
namespace {

using F = FormElement;
using test::ModalCloser;

class FirstUseTest : public test::StartedWindow<installPrinting>
{
protected:
    QRgb centre(QWidget* widget) { return widget->grab().toImage().pixel(widget->width() / 2, widget->height() / 2); }
};

TEST_F(FirstUseTest, AFreshInstallPrintsAtOnceAndStartsAgainWithItsRate)
{
    druckmenue2011 dialog(form, settings, paths, {}, PrintJob([this](int run) {
        return QString::fromStdString((folder.path() / ("druck" + std::to_string(run) + ".pdf")).string());
    }));
    bool failed = false;
    dialog.reportFault = [&failed](const RunError&) { failed = true; };
    dialog.print();
    EXPECT_FALSE(failed) << "anzahl " << form.anzahl();
    EXPECT_TRUE(std::filesystem::exists(folder.path() / "druck1.pdf"));

    // The second start reads the rate the first one found.
    ReceiptForm next;
    next.setText(F::Text3, "");
    smallfiles::loadRate(next, paths);
    EXPECT_EQ(next.text(F::Text3), "19");
}

TEST_F(FirstUseTest, SpinFieldsShowWhatTheModelHolds)
{
    auto* oben = window->findChild<TextSpinBox*>("oben");
    auto* anzahl = window->findChild<TextSpinBox*>("anzahl");
    ASSERT_NE(oben, nullptr);
    ASSERT_NE(anzahl, nullptr);
    EXPECT_EQ(oben->text().toStdString(), form.oben());
    form.setOben("300");
    form.setAnzahl("");
    EXPECT_EQ(oben->text(), "300") << "a stored value beyond the arrows' limit stays";
    EXPECT_EQ(anzahl->text(), "");
    oben->stepBy(1);
    EXPECT_EQ(form.oben(), "270") << "the arrows step back into the limits";
    anzahl->stepBy(1);
    EXPECT_EQ(form.anzahl(), "1");
}

TEST_F(FirstUseTest, F10AndTheSwitchedOnButtonOpenTheCalendarThatWritesTheDate)
{
    auto* date = window->formView()->widgetOf(F::Text9);
    auto* button = window->formView()->findChild<QToolButton*>("Text9_calendar");
    ASSERT_NE(button, nullptr);
    EXPECT_FALSE(button->isVisible());

    // The calendar speaks German whatever the desktop's language.
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    const auto restore = qScopeGuard([] { QLocale::setDefault(QLocale::system()); });
    date->setFocus();
    QTest::keyClick(date, Qt::Key_F10);
    auto* calendar = qobject_cast<QCalendarWidget*>(QApplication::activePopupWidget());
    ASSERT_NE(calendar, nullptr);
    calendar->setSelectedDate(QDate(2026, 3, 5));
    auto* month = calendar->findChild<QToolButton*>("qt_calendar_monthbutton");
    ASSERT_NE(month, nullptr);
    EXPECT_EQ(month->text(), "März");
    QTest::keyClick(calendar->focusWidget() ? calendar->focusWidget() : calendar, Qt::Key_Return);
    EXPECT_EQ(form.text(F::Text9), "05.03.2026");
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);

    window->findChild<QCheckBox*>("xpCheck2")->click();
    EXPECT_TRUE(button->isVisible());
    EXPECT_EQ(settings.get("Zettelwerk", "Options", "Kalender", ""), "1");
    window->findChild<QAction*>("bm_kalenderbutton")->trigger();
    EXPECT_FALSE(button->isVisible());
    EXPECT_EQ(settings.get("Zettelwerk", "Options", "Kalender", ""), "0");
}

TEST_F(FirstUseTest, TheColoursStampAreaIsOnScreenAndStandardBringsBackTheButtonFace)
{
    window->action("hg_red")->trigger();
    const QImage stamp(QString::fromStdString((paths.backgroundFolder() / "stempel_rot.bmp").string()));
    const QRgb red = stamp.pixel(stamp.width() / 2, stamp.height() / 2);
    QWidget* stampArea = window->formView()->widgetOf(F::Image3);
    EXPECT_EQ(QColor(centre(stampArea)).name().toStdString(), QColor(red).name().toStdString());

    window->action("hg_standard")->trigger();
    QWidget* field = window->formView()->widgetOf(F::Text7);
    EXPECT_EQ(QColor(field->grab().toImage().pixel(field->width() - 4, field->height() / 2)).name().toStdString(),
              QApplication::palette(field).color(QPalette::Button).name().toStdString());
}

// Where "Hilfe" leads: SmallWindowTest's question and the menu entry's check in FrameCommandsTest.
TEST_F(FirstUseTest, TheMessageDialogHasItsCaptionsInEveryShape)
{
    ModalCloser closer;
    window->showMessage("Text", MessageStyle::Information, "Titel");
    for (MessageStyle style : {MessageStyle::QuestionYesNo, MessageStyle::QuestionOkCancel, MessageStyle::Warning,
                               MessageStyle::Error})
        window->confirmQuestion("Frage", style, "Titel");
    window->askText("Eingabe", MessageStyle::QuestionOkCancel, "Titel", "");
    const QString asks = "Titel: Okay / Abbrechen / Hilfe";
    EXPECT_EQ(closer.keys, (std::vector<QString>{"Titel: OK / JA", asks, asks, asks, asks, asks}));
}

// A long label of the user's own is drawn smaller inside the form's frame, on the screen as on the photograph;
// a wide box shows it whole, a narrow one its beginning.
TEST_F(FirstUseTest, ALongLabelStaysInsideTheFormsFrameAndShowsWhole)
{
    // The frame's two upright lines, read off the empty form's photograph between two rows of fields.
    const QImage empty = capture(form);
    std::vector<int> lines;
    for (int x = 0; x < empty.width(); ++x) {
        if (qGray(empty.pixel(x, 200)) < 150)
            lines.push_back(x);
    }
    ASSERT_GE(lines.size(), 2u);
    const int frameLeft = lines.front();
    const int frameRight = lines.back();

    const std::string longText = "Den obigen Betrag in Worten haben wir von Herrn Dr. Mustermann dankend erhalten";
    struct Row
    {
        F label;
        std::string text;
        bool whole;
    };
    const Row rows[] = {{F::Label4, longText, true},
                        {F::Label11, "Stempel und Unterschrift des Empfängers oder seines Vertreters", true},
                        {F::Label5, longText, false}};
    for (const auto& [label, text, whole] : rows) {
        SCOPED_TRACE(elementName(label).data());
        form.setText(label, text);
        const QImage written = capture(form);
        int outside = 0;
        for (int y = 0; y < written.height(); ++y) {
            for (int x = 0; x < written.width(); ++x)
                outside += (x <= frameLeft || x >= frameRight) && written.pixel(x, y) != empty.pixel(x, y);
        }
        EXPECT_EQ(outside, 0);
        auto* shown = qobject_cast<QLabel*>(window->formView()->widgetOf(label));
        ASSERT_NE(shown, nullptr);
        EXPECT_GT(shown->geometry().left(), frameLeft);
        EXPECT_LT(shown->geometry().right(), frameRight);
        if (whole) {
            EXPECT_LE(QFontMetrics(shown->font()).horizontalAdvance(shown->text()), shown->width() + 2);
        }
        EXPECT_GE(shown->font().pointSizeF(), formFont(form, label).pointSizeF() * 0.7 - 0.01) << "still read";
        form.setText(label, "");
    }
}

TEST_F(FirstUseTest, TheShortcutBarsPanelsFitTheBarAndTheFormAreaGrowsWithTheWindow)
{
    window->resize(1024, 740);
    auto* bar = window->findChild<QToolBox*>("ShortcutBar1");
    ASSERT_NE(bar, nullptr);
    for (int i = 0; i < bar->count(); ++i) {
        bar->setCurrentIndex(i);
        QApplication::processEvents();
        auto* area = qobject_cast<QScrollArea*>(bar->widget(i)->parentWidget()->parentWidget());
        ASSERT_NE(area, nullptr);
        EXPECT_FALSE(area->horizontalScrollBar()->isVisible()) << bar->itemText(i).toStdString();
    }
    QWidget* formArea = window->formView()->parentWidget();
    const int before = formArea->height();
    window->resize(1200, 900);
    QApplication::processEvents();
    EXPECT_GT(formArea->height(), before);
}

} // namespace
} // namespace zw

