#include "ui/frame/Quittung.h"
#include "ui/frame/QtText.h"

#include "ui/frame/FaultTrap.h"
#include "ui/frame/FileDialogs.h"

#include <QAction>
#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QStatusBar>
#include <QStyle>
#include <QTabWidget>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>

#include "app/CommandCatalogue.h"
#include "app/LookChoices.h"
#include "app/ProgramPaths.h"
#include "core/AmountEntry.h"
#include "core/Hints.h"
#include "core/ReceiptForm.h"
#include "core/ReceiptTypes.h"
#include "core/RunError.h"
#include "print/ReceiptLayout.h"
#include "ui/frame/MenuBuilder.h"
#include "ui/frame/MessageDialog.h"
#include "ui/frame/NoticeWindow.h"
#include "ui/receipt/ReceiptFormView.h"
#include "ui/frame/Ruler.h"
#include "ui/frame/ShortcutBar.h"
#include "ui/frame/TextSpinBox.h"
#include "ui/frame/UserLocale.h"
#include "ui/frame/ErrorWindowReporter.h"

namespace zw {
namespace {

using F = FormElement;



QLabel* smallCaption(const QString& text, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    label->setWordWrap(true);
    return label;
}

} // namespace

Quittung::Quittung(ReceiptForm& form, Settings& settings, const ProgramPaths& paths)
    : m_form(form), m_settings(settings), m_paths(paths), m_capture(paths)
{
    m_capture.setLook(&m_look);
    setObjectName("Quittung");
    m_logic = std::make_unique<QuittungLogic>(form, settings, paths, *this, *this, [this] {
        return zw::today(*m_clock).toString("dd.MM.yyyy").toStdString();
    });
    m_form.attach(&settings, this);
    m_errorWindow = std::make_unique<ErrorWindowReporter>(*this, *m_clock, [this] { unloadAll(); });
    m_faultReporter = m_errorWindow.get();
    faulttrap::setHandler([this](const RunError& error) { showUntrappedFault(*this, error); });

    m_central = new QWidget(this);
    m_central->setObjectName("centralArea");
    auto* formArea = new QWidget(m_central);
    formArea->setObjectName("formArea");
    m_formArea = formArea;
    const int rulerOffset = kRuler2.left / kTwipsPerPixel + 16;
    m_ruler1 = new Ruler(Qt::Horizontal, kFormWidthPixels, formArea);
    m_ruler1->setObjectName("Ruler1");
    m_ruler1->move(rulerOffset, kRuler1.top / kTwipsPerPixel);
    m_ruler2 = new Ruler(Qt::Vertical, kFormHeightPixels, formArea);
    m_ruler2->setObjectName("Ruler2");
    m_ruler2->move(kRuler2.left / kTwipsPerPixel, kRuler1.top / kTwipsPerPixel + 16);
    m_formView = new ReceiptFormView(form, paths, formArea);
    m_formView->move(rulerOffset, kRuler1.top / kTwipsPerPixel + 16);
    // The area keeps the receipt at its top left and grows with the window, as does what takes its place.
    formArea->setMinimumSize(rulerOffset + kFormWidthPixels + 12, kRuler1.top / kTwipsPerPixel + 16 + kFormHeightPixels + 12);
    m_formView->keyFilter = [this](FormElement element, int code) { return filterKey(element, code); };
    m_formView->today = [this] { return zw::today(*m_clock); };
    m_formView->mouseMoved = [this](QPoint at) {
        m_ruler1->setMark(at.x());
        m_ruler2->setMark(at.y());
    };
    m_formView->elementClicked = [this](FormElement element) {
        if (element == F::Label1)
            m_menus["bel"]->popup(QCursor::pos());
        else if (element == F::Text2)
            m_menus["waehru"]->popup(QCursor::pos());
        else if (element == F::Label13)
            openWindow("optionen");
    };

    m_hintLine = new QLabel(m_central);
    m_hintLine->setObjectName("Label16");
    m_hintLine->setFrameShape(QFrame::StyledPanel);
    m_hintLine->setFrameShadow(QFrame::Sunken);
    m_hintLine->setWordWrap(true);
    m_hintLine->setMinimumHeight(40);
    m_hintLine->setAlignment(Qt::AlignLeft | Qt::AlignTop);

    auto* formColumn = new QVBoxLayout;
    formColumn->addWidget(formArea, 1);
    formColumn->addWidget(m_hintLine);
    auto* layout = new QHBoxLayout(m_central);
    layout->addWidget(buildShortcutBar());
    layout->addLayout(formColumn, 1);
    setCentralWidget(m_central);

    auto built = buildMenus(*menuBar(), m_form,
                            [this](ReceiptTypeMenu which, int index) { m_logic->beleg(which, index); });
    m_actions = std::move(built.actions);
    m_menus = std::move(built.menus);
    registerCommands();
    m_form.addListener([this](const FormChange& change) { mirror(change); });
    setWindowTitle(qt(m_logic->windowTitle()));
}

Quittung::~Quittung()
{
    faulttrap::setHandler({});
    m_form.attach(m_form.settings(), nullptr);
}

QAction* Quittung::action(const std::string& name) const
{
    auto found = m_actions.find(name);
    return found == m_actions.end() ? nullptr : found->second;
}

QMenu* Quittung::menu(const std::string& name) const
{
    auto found = m_menus.find(name);
    return found == m_menus.end() ? nullptr : found->second;
}

void Quittung::setClock(const Clock& clock)
{
    m_clock = &clock;
    m_errorWindow->setClock(clock);
}

void Quittung::setFaultMailSender(FaultMailSender sender)
{
    m_errorWindow->setMailSender(std::move(sender));
}

void Quittung::setCommand(const std::string& name, std::function<void()> handler)
{
    QAction* target = action(name);
    if (target == nullptr)
        return;
    target->setEnabled(true);
    connect(target, &QAction::triggered, this, faulttrap::trapped(std::move(handler)));
}

void Quittung::registerCommands()
{
    setCommand("neue", [this] { m_logic->neue(); });
    setCommand("einna", [this] { m_logic->einna(); });
    setCommand("ausga", [this] { m_logic->ausga(); });
    setCommand("steueran", [this] { m_logic->steueran(); });
    setCommand("steueraus", [this] { m_logic->steueraus(); });
    setCommand("eur", [this] { m_logic->eur(); });
    setCommand("ortfest", [this] { m_logic->ortfest(); });
    setCommand("spr_deutsch", [this] { m_logic->spr_deutsch(); });
    setCommand("spr_englisch", [this] { m_logic->spr_englisch(); });
    setCommand("schriftarial", [this] { m_logic->schriftarial(); });
    for (const auto& design : kMenuDesigns)
        setCommand(std::string(design.entry), [this, stored = design.stored] { m_logic->menuDesign(stored); });
    for (const auto& style : kButtonStyles)
        setCommand(std::string(style.entry), [this, stored = style.stored] { m_logic->buttonStyle(stored); });
    setCommand("exxxit", [this] {
        if (m_logic->exxxit())
            unloadAll();
    });
    setCommand("hel11", [this] {
        // The help window shows the handbook where a part offers it; else the desktop's browser does.
        if (m_openers.contains("helpp3")) {
            openWindow("helpp3");
            return;
        }
        QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString((m_paths.helpFolder() / "index.html").string())));
    });
    for (const auto& [name, action] : m_actions) {
        if (action->isCheckable())
            action->setChecked(m_form.isChecked(name));
    }
}

QWidget* Quittung::buildShortcutBar()
{
    // The frame's own controls; rows leave gaps for the parts' keys (the print key at 30, the keys of the lists
    // panel from 10 to 60).
    using P = ShortcutPanel;
    m_shortcutBar = new ShortcutBar(m_central);
    auto* bar = m_shortcutBar;

    auto* print = bar->addPanel(P::ReceiptPrint, "OutlookContainer1", "Belegdruck");
    bar->addControl({P::ReceiptPrint, 0}, smallCaption("Bitte wählen Sie", print));
    m_saveCheck = new QCheckBox("Beleg automatisch speichern", print);
    m_saveCheck->setObjectName("Save_Check");
    bar->addControl({P::ReceiptPrint, 10}, m_saveCheck);
    m_layoutGroup = new QButtonGroup(print);
    for (const auto& row : kPrintLayouts) {
        auto* option = new QRadioButton(qt(row.caption), print);
        option->setObjectName(QString("Option%1").arg(row.option));
        m_layoutGroup->addButton(option, row.option);
        bar->addControl({P::ReceiptPrint, 20}, option);
    }
    m_betragCheck = new QCheckBox("*GiW: kaufm. gerundet (Cents)", print);
    m_betragCheck->setObjectName("betrag_check");
    bar->addControl({P::ReceiptPrint, 40}, m_betragCheck);
    auto* label30 = smallCaption(qt(m_form.text(F::Label30)), print);
    label30->setObjectName("Label30");
    bar->addControl({P::ReceiptPrint, 50}, label30);

    auto* setup = bar->addPanel(P::PrintSetup, "OutlookContainer2", "Druckeinstellungen");
    bar->addControl({P::PrintSetup, 0}, smallCaption("Druckeinstellungen vornehmen", setup));
    // Each spin field under its whole sentence; the field shows the model's text as it is.
    int setupRow = 0;
    auto addSpin = [&](const char* name, const char* image, const QString& sentence, int low, int high) {
        auto* row = new QHBoxLayout;
        auto* spin = new TextSpinBox(low, high, setup);
        spin->setObjectName(name);
        spin->setToolTip(sentence);
        auto* save = new QToolButton(setup);
        save->setObjectName(image);
        save->setIcon(style()->standardIcon(QStyle::SP_DialogSaveButton));
        save->setToolTip("Anklicken um den Wert zu speichern");
        connect(save, &QToolButton::clicked, this, [this] { m_logic->savePrintSetup(); });
        auto* caption = smallCaption(sentence, setup);
        caption->setBuddy(spin);
        row->addWidget(spin, 1);
        row->addWidget(save);
        bar->addControl({P::PrintSetup, setupRow += 10}, caption);
        bar->addControl({P::PrintSetup, setupRow}, row);
        return spin;
    };
    m_oben = addSpin("oben", "Image5", "Abstand der Quittung vom oberen Papierrand in mm.", 1, 270);
    m_anzahl = addSpin("anzahl", "Image4", "Legen Sie die Anzahl der Ausdrucke fest!", 1, 100);
    m_abstand = addSpin("abstand", "Image2", "Abstand der Quittung vom linken Papierrand in mm.", -25, 200);

    auto* settingsPanel = bar->addPanel(P::ReceiptSettings, "OutlookContainer3", "Belegeinstellungen");
    bar->addControl({P::ReceiptSettings, 0}, smallCaption("Einstellungen für die Belege", settingsPanel));
    int settingsRow = 0;
    auto framed = [&](const QString& title, QWidget* content) {
        auto* frame = new QGroupBox(title, settingsPanel);
        auto* inner = new QVBoxLayout(frame);
        inner->addWidget(content);
        bar->addControl({P::ReceiptSettings, settingsRow += 10}, frame);
        return inner;
    };
    // A key that opens one of the window's menus under itself.
    auto menuKey = [&](const char* caption, const char* name, const char* menu) {
        auto* key = new QPushButton(caption, settingsPanel);
        key->setObjectName(name);
        connect(key, &QPushButton::clicked, this,
                [this, key, menu] { m_menus[menu]->popup(key->mapToGlobal(QPoint(0, key->height()))); });
        return key;
    };
    framed(" Steuer ", menuKey("MwSt. an/aus", "Button2", "steu"));
    m_quittnr = new QCheckBox("Quittungsnr. automatisch erhöhen", settingsPanel);
    m_quittnr->setObjectName("quittnr");
    framed("", m_quittnr);
    auto* typeFrame = framed("", smallCaption("Wählen Sie eine Belegart:", settingsPanel));
    typeFrame->addWidget(menuKey("Belegart", "xpButton4", "bel"));
    m_xpCheck1 = new QCheckBox(settingsPanel);
    m_xpCheck1->setObjectName("xpCheck1");
    m_xpCheck1->setToolTip("Hier haben Sie die Möglichkeit die Quittung\nals Ausgabe oder als Einnahme zu deklarieren.");
    framed(" Ein-/Ausgabe ", m_xpCheck1);
    framed(" Währung ", menuKey("Währung", "Button1", "waehru"));

    auto* lists = bar->addPanel(P::Lists, "OutlookContainer5", "Kunden- und Artikelliste");
    bar->addControl({P::Lists, 0}, smallCaption("Kunden- und Artikelliste", lists));
    m_xpCheck2 = new QCheckBox("Kalenderbutton im Feld \"Datum\" anzeigen", lists);
    m_xpCheck2->setObjectName("xpCheck2");
    bar->addControl({P::Lists, 70}, m_xpCheck2);
    m_stampGroup = new QButtonGroup(lists);
    int stampId = 0;
    for (const char* caption : {"Kein Stempel", "\"ORIGINAL\" auf Beleg 1", "\"KOPIE\" auf Beleg 1"}) {
        auto* choice = new QRadioButton(caption, lists);
        choice->setObjectName(QString("opt_stamp_%1").arg(stampId));
        m_stampGroup->addButton(choice, stampId++);
        bar->addControl({P::Lists, 80}, choice);
    }

    connect(m_saveCheck, &QCheckBox::toggled, this, [this](bool on) {
        if (!m_mirroring)
            m_logic->saveCheckChanged(on ? 1 : 0);
    });
    connect(m_quittnr, &QCheckBox::toggled, this, [this](bool on) {
        if (!m_mirroring)
            m_logic->quittnrChanged(on ? 1 : 0);
    });
    connect(m_betragCheck, &QCheckBox::toggled, this, [this](bool on) {
        if (!m_mirroring)
            m_form.setBetragCheck(on ? 1 : 0);
    });
    connect(m_xpCheck1, &QCheckBox::toggled, this, [this](bool on) {
        if (!m_mirroring)
            m_logic->incomeSwitchClicked(on ? 1 : 0);
    });
    connect(m_xpCheck2, &QCheckBox::toggled, this, [this](bool on) {
        if (!m_mirroring)
            m_logic->calendarSwitchChanged(on ? 1 : 0);
    });
    connect(m_layoutGroup, &QButtonGroup::idClicked, this, [this](int id) { m_logic->printLayoutChosen(id); });
    connect(m_stampGroup, &QButtonGroup::idClicked, this,
            [this](int id) { m_form.setStampChoice(static_cast<StampChoice>(id)); });
    auto bindSpin = [this](TextSpinBox* spin, void (ReceiptForm::*setter)(std::string)) {
        spin->edited = [this, setter](const QString& text) {
            if (!m_mirroring)
                (m_form.*setter)(text.toStdString());
        };
    };
    bindSpin(m_abstand, &ReceiptForm::setAbstand);
    bindSpin(m_anzahl, &ReceiptForm::setAnzahl);
    bindSpin(m_oben, &ReceiptForm::setOben);
    mirrorSwitches();
    return m_shortcutBar;
}

void Quittung::mirrorSwitches()
{
    m_mirroring = true;
    m_saveCheck->setChecked(m_form.saveCheck() == 1);
    m_quittnr->setChecked(m_form.quittnr() == 1);
    m_betragCheck->setChecked(m_form.betragCheck() == 1);
    m_xpCheck1->setChecked(m_form.income() != 0);
    m_xpCheck1->setText(qt(m_form.incomeCaption()));
    m_xpCheck2->setChecked(m_form.calendarButton() == 1);
    if (auto* option = m_layoutGroup->button(printLayoutRow(m_form.printLayout()).option))
        option->setChecked(true);
    if (auto* stamp = m_stampGroup->button(static_cast<int>(m_form.stampChoice())))
        stamp->setChecked(true);
    m_abstand->showText(qt(m_form.abstand()));
    m_anzahl->showText(qt(m_form.anzahl()));
    m_oben->showText(qt(m_form.oben()));
    m_mirroring = false;
}

void Quittung::mirror(const FormChange& change)
{
    switch (change.aspect) {
    case FormAspect::Text:
        if (change.element == F::Label16)
            m_hintLine->setText(qt(hintShown(m_form.text(F::Label16))));
        break;
    case FormAspect::Switch:
        mirrorSwitches();
        break;
    case FormAspect::MenuCheck:
        if (QAction* target = action(std::string(change.name)); target && target->isCheckable())
            target->setChecked(m_form.isChecked(change.name));
        break;
    default:
        break;
    }
}

int Quittung::filterKey(FormElement element, int code) { return keyPress(m_form, element, code); }

void Quittung::showMessage(std::string_view text, MessageStyle style, std::string_view title)
{
    MessageDialog::showMessage(this, text, style, title);
}

int Quittung::confirmQuestion(std::string_view text, MessageStyle style, std::string_view title)
{
    return MessageDialog::confirmQuestion(this, text, style, title, [this] { action("hel11")->trigger(); });
}

int Quittung::askByMessage(std::string_view text, MessageStyle style, std::string_view title)
{
    return MessageDialog::showMessage(this, text, style, title);
}

int Quittung::messageBox(std::string_view text, int style, std::string_view title)
{
    return MessageDialog::messageBox(this, text, style, title);
}

std::optional<std::string> Quittung::askText(std::string_view text, MessageStyle style, std::string_view title,
                                             std::string_view initial)
{
    return MessageDialog::askText(this, text, style, title, initial, [this] { action("hel11")->trigger(); });
}

void Quittung::showNotice(Notice notice) { NoticeWindow::run(this, notice); }

void Quittung::beep() { QApplication::beep(); }

void Quittung::setWindowOpener(const std::string& name, std::function<void()> opener)
{
    m_openers[name] = std::move(opener);
}

void Quittung::openWindow(std::string_view name)
{
    auto found = m_openers.find(std::string(name));
    if (found != m_openers.end())
        faulttrap::trapped(found->second)();
}

void Quittung::setWindowBackground(const std::string& programPath)
{
    QPixmap picture(QString::fromStdString(m_paths.resolve(programPath).string()));
    if (picture.isNull())
        return; // a missing picture leaves the window plain, without a message
    QPalette colours = m_central->palette();
    colours.setBrush(QPalette::Window, QBrush(picture));
    m_central->setAutoFillBackground(true);
    m_central->setPalette(colours);
}

void Quittung::runStartStep(StartStep step)
{
    if (auto found = m_startSteps.find(step); found != m_startSteps.end())
        found->second();
}

void Quittung::showRulers(bool visible)
{
    m_ruler1->setVisible(visible);
    m_ruler2->setVisible(visible);
}

void Quittung::setLastFileCaption(const std::string& caption)
{
    if (QAction* last = action("men_dat"))
        last->setText(qt(caption));
}

CommonDialog& Quittung::fileDialog(const std::string& command)
{
    auto& dialog = m_fileDialogs[command];
    if (!dialog) {
        dialog = std::make_unique<CommonDialog>();
        dialog->setPresenter(fileDialogPresenter(this));
    }
    return *dialog;
}

void Quittung::unloadAll()
{
    if (!m_logic->beginUnload())
        return;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window != this)
            window->close();
    }
    hide();
    m_logic->endUnload();
    QApplication::quit();
}

void Quittung::closeEvent(QCloseEvent* event)
{
    unloadAll();
    event->accept();
}

QTabWidget* Quittung::addTabBesideReceipt(QWidget* page, const QString& caption)
{
    if (!m_receiptTabs) {
        m_receiptTabs = new QTabWidget;
        m_receiptTabs->setObjectName("sevTabStrip1");
        // replaceWidget hands back the old item, which the caller owns.
        delete m_central->layout()->replaceWidget(m_formArea, m_receiptTabs, Qt::FindChildrenRecursively);
        m_receiptTabs->addTab(m_formArea, "Quittung");
    }
    m_receiptTabs->addTab(page, caption);
    return m_receiptTabs;
}

} // namespace zw
