#include "ui/lists/Autocompletion.h"

#include <QApplication>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QThread>
#include <QTime>
#include <memory>

#include "app/SettingsStore.h"
#include "app/ProgramPaths.h"
#include "core/ReceiptForm.h"
#include "lists/Autocomplete.h"
#include "lists/AutocompleteTyping.h"
#include "lists/Time.h"
#include "ui/frame/Quittung.h"
#include "ui/lists/autocom_bear.h"
#include "ui/lists/helpp3.h"

namespace zw {
namespace {

using F = FormElement;

constexpr FormElement kCompletingFields[] = {F::Text5, F::Text6, F::Text7, F::Text8};

// The list and the backspace flag of the main window, living as long as it does.
class AutocompletionPart : public QObject
{
public:
    AutocompletionPart(const ProgramPaths& paths, QObject* parent)
        : QObject(parent), list(paths.dataFile("autocom.dat")), typing(list)
    {
    }

    Autocomplete list;
    AutocompleteTyping typing;
};

double secondsSinceMidnight()
{
    return QTime::currentTime().msecsSinceStartOfDay() / 1000.0;
}

void letEventsRun()
{
    QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    QThread::msleep(5);
}

// The notice autoge over the receipt, shown while the form model marks it visible.
void createNotice(Quittung& window, ReceiptForm& form)
{
    QWidget* area = window.formView();
    auto* notice = new QLabel("Ihr Eintrag wurde zur Autovervollständigung hinzugefügt.", area);
    notice->setObjectName("autoge");
    notice->setStyleSheet(
        "QLabel { background: #FFFFE1; color: #000000; border: 1px solid #808080; padding: 3px; }");
    notice->hide();
    QPointer<QLabel> guard(notice);
    form.addListener([guard, area, &form](const FormChange& change) {
        if (!guard || change.aspect != FormAspect::Visibility || change.element != F::autoge)
            return;
        guard->adjustSize();
        guard->move((area->width() - guard->width()) / 2, area->height() - guard->height() - 8);
        guard->setVisible(form.isVisible(F::autoge));
        guard->raise();
    });
}

} // namespace

void installAutocompletion(const PartContext& context)
{
    Quittung& window = context.window;
    ReceiptForm& form = context.form;
    const ProgramPaths& paths = context.paths;
    auto* part = new AutocompletionPart(paths, &window);
    window.setStartStep(StartStep::LoadAutocompletion, [part] { part->list.LoadEntries(); });
    createNotice(window, form);

    for (FormElement field : kCompletingFields) {
        window.onFieldKey(field, [part, &form, field](const QKeyEvent& key) {
            const int code = keyPressCode(key);
            if (code == 0 || !part->typing.keyPressed(code, form.text(field)))
                return false;
            // A second Enter during the wait starts a nested one; the first wait to end hides the notice.
            form.setVisible(F::autoge, true);
            Wait(3, secondsSinceMidnight, letEventsRun);
            form.setVisible(F::autoge, false);
            return false;
        });
        window.onFieldChanged(field, [part, &window, &form, field](const std::string& text) {
            auto completion = part->typing.changed(text, window.fieldCaret(field));
            if (!completion)
                return;
            form.setText(field, completion->text);
            window.selectInField(field, completion->caret, completion->selectionLength);
        });
    }

    window.setCommand("autver", [&window] { window.openWindow("autocom_bear"); });
    window.setWindowOpener("autocom_bear", [part, &window] {
        part->list.SaveEntries(); // the list reaches the file here and at "Zurück", nowhere else
        autocom_bear editor(part->list, window, window.faultReporter(), &window);
        editor.exec();
    });
}

void installHelpWindow(const PartContext& context)
{
    Quittung& window = context.window;
    const ProgramPaths& paths = context.paths;
    // One help window at a time, left open beside the receipt while the user works.
    auto open = std::make_shared<QPointer<helpp3>>();
    window.setWindowOpener("helpp3", [open, &window, page = paths.helpFolder() / "index.html"] {
        if (*open == nullptr) {
            *open = new helpp3(page, &window);
            (*open)->setAttribute(Qt::WA_DeleteOnClose);
        }
        // Opened from a question's "Hilfe", the window must take input above that question.
        if (QApplication::activeModalWidget() != nullptr && !(*open)->isModal()) {
            (*open)->hide();
            (*open)->setWindowModality(Qt::ApplicationModal);
        }
        (*open)->show();
        (*open)->raise();
        (*open)->activateWindow();
    });
}

} // namespace zw
