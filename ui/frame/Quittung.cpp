#include "ui/frame/Quittung.h"
#include "ui/frame/QtText.h"

#include "ui/frame/FaultTrap.h"
#include "ui/frame/FileDialogs.h"

#include <QAction>
#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QCloseEvent>
#include <QDate>
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
#include <QToolBox>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>
#include <tuple>

#include "app/CommandCatalogue.h"
#include "app/LookChoices.h"
#include "app/ProgramPaths.h"
#include "core/AmountEntry.h"
#include "core/Hints.h"
#include "core/ReceiptForm.h"
#include "core/ReceiptTypes.h"
#include "core/RunError.h"
#include "print/ReceiptLayout.h"
#include "ui/frame/MessageDialog.h"
#include "ui/frame/NoticeWindow.h"
#include "ui/receipt/ReceiptFormView.h"
#include "ui/frame/Ruler.h"
#include "ui/frame/TextSpinBox.h"
#include "ui/frame/fehlerform.h"

namespace zw {
namespace {

using F = FormElement;


std::string today() { return QDate::currentDate().toString("dd.MM.yyyy").toStdString(); }

// The names whose menu entries carry a check mark.
bool isCheckable(std::string_view name)
{
    static constexpr std::string_view kCheckable[] = {
        "einna",       "ausga",        "steueran",      "steueraus",         "eur",          "waehrungfestlegen",
        "spr_deutsch", "spr_englisch", "schriftarial",  "schrift",           "xpdesign",     "office2003er",
        "office2007er", "vbstudio05",  "flat_button",   "office_button",     "office2003_button",
        "xp_button",   "vista_button", "ausstellerein", "einfst",
        "austeller_ent", "entfst"};
    for (auto name2 : kCheckable) {
        if (name2 == name)
            return true;
    }
    return false;
}

// The caption's markup read as formatting: the square becomes an icon, bold/italic/underline the font.
void formatAction(QAction* action, std::string_view caption)
{
    CaptionFormat format = parseCaption(caption);
    action->setText(qt(format.text));
    QFont font = action->font();
    font.setBold(format.bold);
    font.setItalic(format.italic);
    font.setUnderline(format.underline);
    action->setFont(font);
    if (!format.squareColour.empty()) {
        QPixmap square(12, 12);
        square.fill(QColor(qt("#" + format.squareColour)));
        QPainter painter(&square);
        painter.setPen(Qt::black);
        painter.drawRect(0, 0, 11, 11);
        action->setIcon(QIcon(square));
    }
}

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
    m_logic = std::make_unique<QuittungLogic>(form, settings, paths, *this, *this, today);
    m_form.attach(&settings, this);
    m_errorWindow = std::make_unique<ErrorWindowReporter>(*this);
    m_faultReporter = m_errorWindow.get();
    faulttrap::setHandler([this](const RunError& error) { showUntrappedFault(*this, error); });

    m_central = new QWidget(this);
    m_central->setObjectName("centralArea");
    auto* formArea = new QWidget(m_central);
    formArea->setObjectName("formArea");
    m_formArea = formArea;
    const int rulerOffset = kRuler2.left / kTwipsPerPixel + 16;
    m_ruler1 = new Ruler(Qt::Horizontal, kFormWidthPixels, formArea);
    m_ruler1->move(rulerOffset, kRuler1.top / kTwipsPerPixel);
    m_ruler2 = new Ruler(Qt::Vertical, kFormHeightPixels, formArea);
    m_ruler2->move(kRuler2.left / kTwipsPerPixel, kRuler1.top / kTwipsPerPixel + 16);
    m_formView = new ReceiptFormView(form, paths, formArea);
    m_formView->move(rulerOffset, kRuler1.top / kTwipsPerPixel + 16);
    // The area keeps the receipt at its top left and grows with the window, as does what takes its place.
    formArea->setMinimumSize(rulerOffset + kFormWidthPixels + 12, kRuler1.top / kTwipsPerPixel + 16 + kFormHeightPixels + 12);
    m_formView->keyFilter = [this](FormElement element, int code) { return filterKey(element, code); };
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

    buildMenus();
    registerCommands();
    m_form.addListener([this](const FormChange& change) { mirror(change); });
    setWindowTitle(qt(m_logic->windowTitle()));
}

Quittung::~Quittung()
{
    faulttrap::setHandler({});
    m_form.attach(m_form.settings(), nullptr);
    delete m_windowBackground;
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

void Quittung::buildMenus()
{
    auto tree = menuTree();
    std::vector<QMenu*> open(3, nullptr);
    for (std::size_t i = 0; i < tree.size(); ++i) {
        const MenuEntry& entry = tree[i];
        const bool hasChildren = i + 1 < tree.size() && tree[i + 1].depth == entry.depth + 1;
        const std::string name(entry.name);
        if (entry.depth == 0) {
            open[0] = menuBar()->addMenu(qt(parseCaption(entry.caption).text));
            open[0]->setObjectName(qt(entry.name));
            m_menus[name] = open[0];
            continue;
        }
        QMenu* parent = open[static_cast<std::size_t>(entry.depth - 1)];
        if (entry.caption == "-") {
            parent->addSeparator();
            continue;
        }
        if (hasChildren || name == "bel") {
            QMenu* sub = parent->addMenu(qt(parseCaption(entry.caption).text));
            sub->setObjectName(qt(entry.name));
            formatAction(sub->menuAction(), entry.caption);
            open[static_cast<std::size_t>(entry.depth)] = sub;
            m_menus[name] = sub;
            if (name == "bel")
                buildReceiptTypeMenu(sub);
            continue;
        }
        QAction* action = parent->addAction(QString());
        action->setObjectName(qt(entry.name));
        formatAction(action, entry.caption);
        if (!entry.shortcut.empty()) {
            action->setShortcut(QKeySequence(qt(entry.shortcut)));
            action->setShortcutContext(Qt::ApplicationShortcut);
        }
        action->setCheckable(isCheckable(entry.name));
        action->setEnabled(false);
        connect(action, &QAction::triggered, this, [this, action] {
            // The menu keeps its own marks in the model; undo Qt's automatic toggle.
            if (action->isCheckable())
                action->setChecked(m_form.isChecked(action->objectName().toStdString()));
        });
        m_actions[name] = action;
    }
}

void Quittung::buildReceiptTypeMenu(QMenu* bel)
{
    auto addTypes = [this](QMenu* menu, ReceiptTypeMenu which, const char* prefix) {
        auto types = receiptTypes(which);
        for (std::size_t index = 0; index < types.size(); ++index) {
            QAction* action = menu->addAction(qt(types[index].menuCaption));
            action->setObjectName(QString("%1_%2").arg(prefix).arg(index));
            connect(action, &QAction::triggered, this,
                    [this, which, index] { m_logic->beleg(which, static_cast<int>(index)); });
            m_actions[action->objectName().toStdString()] = action;
        }
    };
    QMenu* health = bel->addMenu("Gesundheitswesen");
    health->setObjectName("gesundhei");
    addTypes(health, ReceiptTypeMenu::beleg2, "beleg2");
    QMenu* school = bel->addMenu("Schulwesen");
    school->setObjectName("schulwe");
    addTypes(school, ReceiptTypeMenu::beleg3, "beleg3");
    addTypes(bel, ReceiptTypeMenu::beleg1, "beleg1");
    bel->addSeparator();
    QAction* own = bel->addAction("Eigene Belegart...");
    own->setObjectName("beleg1_9");
    connect(own, &QAction::triggered, this, [this] { m_logic->beleg(ReceiptTypeMenu::beleg1, kOwnTypeIndex); });
    m_actions["beleg1_9"] = own;
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
    m_shortcutBar = new QToolBox(m_central);
    m_shortcutBar->setObjectName("ShortcutBar1");

    // Belegdruck
    auto* print = new QWidget;
    print->setObjectName("OutlookContainer1");
    auto* printLayout = new QVBoxLayout(print);
    printLayout->addWidget(smallCaption("Bitte wählen Sie", print));
    m_saveCheck = new QCheckBox("Beleg automatisch speichern", print);
    m_saveCheck->setObjectName("Save_Check");
    printLayout->addWidget(m_saveCheck);
    m_layoutGroup = new QButtonGroup(print);
    for (const auto& row : kPrintLayouts) {
        auto* option = new QRadioButton(qt(row.caption), print);
        option->setObjectName(QString("Option%1").arg(row.option));
        m_layoutGroup->addButton(option, row.option);
        printLayout->addWidget(option);
    }
    auto* printButton = new QPushButton("&Drucken", print);
    printButton->setObjectName("xpButton3");
    m_shortcutKeys[ShortcutKey::Print] = printButton;
    printButton->setEnabled(false);
    printLayout->addWidget(printButton);
    m_betragCheck = new QCheckBox("*GiW: kaufm. gerundet (Cents)", print);
    m_betragCheck->setObjectName("betrag_check");
    printLayout->addWidget(m_betragCheck);
    auto* label30 = smallCaption(qt(m_form.text(F::Label30)), print);
    label30->setObjectName("Label30");
    printLayout->addWidget(label30);
    printLayout->addStretch();
    m_shortcutBar->addItem(print, "Belegdruck");

    // Druckeinstellungen
    auto* setup = new QWidget;
    setup->setObjectName("OutlookContainer2");
    auto* setupLayout = new QVBoxLayout(setup);
    setupLayout->addWidget(smallCaption("Druckeinstellungen vornehmen", setup));
    // Each spin field under its whole sentence; the field shows the model's text as it is.
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
        setupLayout->addWidget(caption);
        setupLayout->addLayout(row);
        return spin;
    };
    m_oben = addSpin("oben", "Image5", "Abstand der Quittung vom oberen Papierrand in mm.", 1, 270);
    m_anzahl = addSpin("anzahl", "Image4", "Legen Sie die Anzahl der Ausdrucke fest!", 1, 100);
    m_abstand = addSpin("abstand", "Image2", "Abstand der Quittung vom linken Papierrand in mm.", -25, 200);
    setupLayout->addStretch();
    m_shortcutBar->addItem(setup, "Druckeinstellungen");

    // Belegeinstellungen
    auto* settingsPanel = new QWidget;
    settingsPanel->setObjectName("OutlookContainer3");
    auto* settingsLayout = new QVBoxLayout(settingsPanel);
    settingsLayout->addWidget(smallCaption("Einstellungen für die Belege", settingsPanel));
    auto framed = [&](const QString& title, QWidget* content) {
        auto* frame = new QGroupBox(title, settingsPanel);
        auto* inner = new QVBoxLayout(frame);
        inner->addWidget(content);
        settingsLayout->addWidget(frame);
        return inner;
    };
    auto* taxButton = new QPushButton("MwSt. an/aus", settingsPanel);
    taxButton->setObjectName("Button2");
    connect(taxButton, &QPushButton::clicked, this,
            [this, taxButton] { m_menus["steu"]->popup(taxButton->mapToGlobal(QPoint(0, taxButton->height()))); });
    framed(" Steuer ", taxButton);
    m_quittnr = new QCheckBox("Quittungsnr. automatisch erhöhen", settingsPanel);
    m_quittnr->setObjectName("quittnr");
    framed("", m_quittnr);
    auto* typeButton = new QPushButton("Belegart", settingsPanel);
    typeButton->setObjectName("xpButton4");
    connect(typeButton, &QPushButton::clicked, this,
            [this, typeButton] { m_menus["bel"]->popup(typeButton->mapToGlobal(QPoint(0, typeButton->height()))); });
    auto* typeFrame = framed("", smallCaption("Wählen Sie eine Belegart:", settingsPanel));
    typeFrame->addWidget(typeButton);
    m_xpCheck1 = new QCheckBox(settingsPanel);
    m_xpCheck1->setObjectName("xpCheck1");
    m_xpCheck1->setToolTip("Hier haben Sie die Möglichkeit die Quittung\nals Ausgabe oder als Einnahme zu deklarieren.");
    framed(" Ein-/Ausgabe ", m_xpCheck1);
    auto* currencyButton = new QPushButton("Währung", settingsPanel);
    currencyButton->setObjectName("Button1");
    connect(currencyButton, &QPushButton::clicked, this, [this, currencyButton] {
        m_menus["waehru"]->popup(currencyButton->mapToGlobal(QPoint(0, currencyButton->height())));
    });
    framed(" Währung ", currencyButton);
    settingsLayout->addStretch();
    m_shortcutBar->addItem(settingsPanel, "Belegeinstellungen");

    // Buchhaltung: the totals are filled by the ledger.
    auto* books = new QWidget;
    books->setObjectName("OutlookContainer4");
    auto* booksLayout = new QVBoxLayout(books);
    booksLayout->addWidget(smallCaption("Einnahmen und Ausgaben", books));
    for (auto [total, name, caption] : {std::tuple{&m_booksPanel.income, "Label21", "Einnahmen:"},
                                        {&m_booksPanel.expense, "Label23", "Ausgaben:"},
                                        {&m_booksPanel.balance, "Label25", "Differenz:"}}) {
        auto* row = new QHBoxLayout;
        row->addWidget(new QLabel(caption, books));
        row->addStretch();
        auto* value = new QLabel("0,00", books);
        value->setObjectName(name);
        row->addWidget(value);
        *total = value;
        booksLayout->addLayout(row);
    }
    auto* currencyRow = new QHBoxLayout;
    currencyRow->addWidget(new QLabel("Aktuelle Währung:", books));
    auto* label28 = new QLabel("EUR", books);
    label28->setObjectName("Label28");
    m_booksPanel.currency = label28;
    currencyRow->addWidget(label28);
    currencyRow->addStretch();
    booksLayout->addLayout(currencyRow);
    auto* refresh = new QPushButton("Daten &aktualisieren", books);
    refresh->setObjectName("Button3");
    m_booksPanel.refresh = refresh;
    refresh->setEnabled(false);
    booksLayout->addWidget(refresh);
    booksLayout->addStretch();
    m_shortcutBar->addItem(books, "Buchhaltung");

    // Kunden- und Artikelliste
    auto* lists = new QWidget;
    lists->setObjectName("OutlookContainer5");
    auto* listsLayout = new QVBoxLayout(lists);
    listsLayout->addWidget(smallCaption("Kunden- und Artikelliste", lists));
    using K = ShortcutKey;
    for (auto [key, name, caption] : {std::tuple{K::FromList, "Command3", "Von-Liste aufrufen"},
                                      {K::ForList, "Command2", "Für-Liste aufrufen"},
                                      {K::Font, "Command6_0", "Schriftart für Beleg"},
                                      {K::SwitchIssuer, "Command6_1", "&Aussteller wechseln"},
                                      {K::FieldLabels, "Command6_2", "Feldbezeichnungen ändern"},
                                      {K::Mail, "cmdMail", "Beleg per E-Mail senden"}}) {
        auto* button = new QPushButton(caption, lists);
        button->setObjectName(name);
        m_shortcutKeys[key] = button;
        button->setEnabled(false);
        listsLayout->addWidget(button);
    }
    m_xpCheck2 = new QCheckBox("Kalenderbutton im Feld \"Datum\" anzeigen", lists);
    m_xpCheck2->setObjectName("xpCheck2");
    listsLayout->addWidget(m_xpCheck2);
    m_stampGroup = new QButtonGroup(lists);
    int stampId = 0;
    for (const char* caption : {"Kein Stempel", "\"ORIGINAL\" auf Beleg 1", "\"KOPIE\" auf Beleg 1"}) {
        auto* choice = new QRadioButton(caption, lists);
        choice->setObjectName(QString("opt_stamp_%1").arg(stampId));
        m_stampGroup->addButton(choice, stampId++);
        listsLayout->addWidget(choice);
    }
    listsLayout->addStretch();
    m_shortcutBar->addItem(lists, "Kunden- und Artikelliste");
    m_shortcutBar->setCurrentIndex(0);
    // The bar is as wide as its widest panel needs, with room for a vertical scroll bar on a low screen, so no
    // caption or button is ever cut and no horizontal scroll bar appears.
    int widest = 0;
    for (int i = 0; i < m_shortcutBar->count(); ++i)
        widest = std::max(widest, m_shortcutBar->widget(i)->minimumSizeHint().width());
    m_shortcutBar->setFixedWidth(widest + style()->pixelMetric(QStyle::PM_ScrollBarExtent) +
                                 2 * m_shortcutBar->frameWidth() + 4);

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

void Quittung::setShortcutKey(ShortcutKey key, std::function<void()> handler)
{
    QPushButton* button = m_shortcutKeys.at(key);
    button->setEnabled(true);
    connect(button, &QPushButton::clicked, this, faulttrap::trapped(std::move(handler)));
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
