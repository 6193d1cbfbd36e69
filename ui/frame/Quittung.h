#pragma once

#include <QMainWindow>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "app/Appearance.h"
#include "app/Clock.h"
#include "app/CommonDialog.h"
#include "app/FaultReporter.h"
#include "app/QuittungLogic.h"
#include "core/FormHost.h"
#include "print/Capture.h"
#include "ui/frame/ShortcutBar.h"
#include "ui/receipt/ReceiptFormView.h"

class QAction;
class QButtonGroup;
class QCheckBox;
class QLabel;
class QMenu;
class QPushButton;
class QTabWidget;

namespace zw {

class ErrorWindowReporter;
class ProgramPaths;
class ReceiptForm;
class ReceiptFormView;
class Ruler;
class Settings;
class TextSpinBox;
struct FormChange;

// The main window: menu, shortcut bar, the receipt form and the hint line. It shows what the form model holds
// and hands every command to the logic; it is also the host that shows messages and opens other windows.
class Quittung : public QMainWindow, public FormHost, public WindowParts
{
public:
    Quittung(ReceiptForm& form, Settings& settings, const ProgramPaths& paths);
    ~Quittung() override;

    QuittungLogic& logic() { return *m_logic; }
    ReceiptFormView* formView() const { return m_formView; }
    QAction* action(const std::string& name) const;
    QMenu* menu(const std::string& name) const;

    // Registers what a command does; a command without a handler stays visible but disabled.
    void setCommand(const std::string& name, std::function<void()> handler);

    // FormHost
    void showMessage(std::string_view text, MessageStyle style, std::string_view title) override;
    int confirmQuestion(std::string_view text, MessageStyle style, std::string_view title) override;
    int askByMessage(std::string_view text, MessageStyle style, std::string_view title) override;
    int messageBox(std::string_view text, int style, std::string_view title) override;
    std::optional<std::string> askText(std::string_view text, MessageStyle style, std::string_view title,
                                       std::string_view initial) override;
    void showNotice(Notice notice) override;
    void beep() override;
    void openWindow(std::string_view name) override;

    // WindowParts
    void setWindowBackground(const std::string& programPath) override;
    void showRulers(bool visible) override;
    void applyMenuDesign(int styleNumber) override;
    void applyButtonStyle(int styleNumber) override;
    void setLastFileCaption(const std::string& caption) override;
    void runStartStep(StartStep step) override;

    // What a step of the start runs: the part that owns the step registers it.
    void setStartStep(StartStep step, std::function<void()> part) { m_startSteps[step] = std::move(part); }

    // The three ways out end here: unload every window once.
    void unloadAll();

    // Windows opened by name; other subsystems register theirs.
    void setWindowOpener(const std::string& name, std::function<void()> opener);

    // The shortcut bar, where parts put their panels and keys.
    ShortcutBar& shortcutBar() { return *m_shortcutBar; }

    // What a part of the window may use besides commands and openers; parts never look each other up.
    // A tab beside the receipt: the first one turns the receipt area into the tab strip sevTabStrip1.
    QTabWidget* addTabBesideReceipt(QWidget* page, const QString& caption);
    // Filing a printed receipt: the ledger offers it, printing uses it; without a ledger nothing is filed.
    using ReceiptFiler = std::function<void(const std::vector<std::string>& row)>;
    void setReceiptFiler(ReceiptFiler filer) { m_receiptFiler = std::move(filer); }
    void fileReceiptRow(const std::vector<std::string>& row) const
    {
        if (m_receiptFiler)
            m_receiptFiler(row);
    }

    // The time and chance the windows use; a test may set fixed ones.
    const Clock& clock() const { return *m_clock; }
    Random& random() { return *m_random; }
    void setClock(const Clock& clock);
    void setRandom(Random& random) { m_random = &random; }

    // The session's receipt colour and stamp area; the frame's options change it.
    ReceiptLook& look() { return m_look; }
    // The one photograph of the receipt that printing, the exports and the clipboard all take.
    const Capture& capture() const { return m_capture; }

    // Hooks on a receipt field: its key presses before the field takes them, and the text the user changed.
    void onFieldKey(FormElement element, FieldKeyHook hook) { m_formView->onFieldKey(element, std::move(hook)); }
    void onFieldChanged(FormElement element, FieldChangedHook hook)
    {
        m_formView->onFieldChanged(element, std::move(hook));
    }
    // The caret of a receipt field and a selection in it (the autocompletion's completed tail).
    int fieldCaret(FormElement element) const { return m_formView->caretOf(element); }
    void selectInField(FormElement element, int start, int length) { m_formView->selectInField(element, start, length); }

    // Where the parts' trapped routines report their faults: the error window, unless a test sets another.
    FaultReporter& faultReporter() { return *m_faultReporter; }
    void setFaultReporter(FaultReporter& reporter) { m_faultReporter = &reporter; }
    // The error window's send button stays disabled until the mail part gives it a sender.
    void setFaultMailSender(FaultMailSender sender);

    // A file dialog of the window's own for each command that saves through it, so that no command clears
    // what another left behind; each keeps its own last name for the session.
    CommonDialog& fileDialog(const std::string& command);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QWidget* buildShortcutBar();
    void registerCommands();
    void mirror(const FormChange& change);
    void mirrorSwitches();
    int filterKey(FormElement element, int code);

    ReceiptForm& m_form;
    Settings& m_settings;
    const ProgramPaths& m_paths;
    std::unique_ptr<QuittungLogic> m_logic;
    ReceiptFormView* m_formView = nullptr;
    Ruler* m_ruler1 = nullptr;
    Ruler* m_ruler2 = nullptr;
    QLabel* m_hintLine = nullptr;
    QWidget* m_central = nullptr;
    QWidget* m_formArea = nullptr;
    QTabWidget* m_receiptTabs = nullptr;
    ReceiptFiler m_receiptFiler;
    ShortcutBar* m_shortcutBar = nullptr;
    std::map<std::string, QAction*> m_actions;
    std::map<std::string, QMenu*> m_menus;
    std::map<std::string, std::function<void()>> m_openers;
    std::map<StartStep, std::function<void()>> m_startSteps;
    // Shortcut bar controls mirrored from the model.
    QCheckBox* m_saveCheck = nullptr;
    QCheckBox* m_quittnr = nullptr;
    QCheckBox* m_betragCheck = nullptr;
    QCheckBox* m_xpCheck1 = nullptr;
    QCheckBox* m_xpCheck2 = nullptr;
    QButtonGroup* m_layoutGroup = nullptr;
    QButtonGroup* m_stampGroup = nullptr;
    TextSpinBox* m_abstand = nullptr;
    TextSpinBox* m_anzahl = nullptr;
    TextSpinBox* m_oben = nullptr;
    bool m_mirroring = false;
    std::map<std::string, std::unique_ptr<CommonDialog>> m_fileDialogs;
    ReceiptLook m_look;
    Capture m_capture;
    std::unique_ptr<ErrorWindowReporter> m_errorWindow;
    FaultReporter* m_faultReporter = nullptr;
    SystemClock m_systemClock;
    SystemRandom m_systemRandom;
    const Clock* m_clock = &m_systemClock;
    Random* m_random = &m_systemRandom;
};

} // namespace zw
