#include "ui/frame/FrameCommands.h"
#include "app/SettingsStore.h"
#include "ui/frame/QtText.h"

#include <QAction>
#include <QApplication>
#include <QDesktopServices>
#include <QDialog>
#include <QEvent>
#include <QFontDialog>
#include <QFontInfo>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStyle>
#include <QSystemTrayIcon>
#include <QToolBar>
#include <QToolBox>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>
#include <QWindowStateChangeEvent>
#include <vector>

#include "app/Appearance.h"
#include "app/OptionenLogic.h"
#include "app/ProgramPaths.h"
#include "app/VendorAddresses.h"
#include "app/Version.h"
#include "core/ReceiptForm.h"
#include "core/RunError.h"
#include "ui/frame/AboutWindow.h"
#include "ui/frame/NavigationOptions.h"
#include "ui/frame/Quittung.h"
#include "ui/frame/ShortcutBar.h"
#include "ui/receipt/ReceiptFormView.h"
#include "ui/frame/WindowTitle.h"
#include "ui/frame/optionen.h"

namespace zw {
namespace {

using F = FormElement;


QColor colourOf(std::uint32_t number, const QWidget* widget)
{
    if (auto rgb = rgbOfColourNumber(number))
        return QColor(rgb->red, rgb->green, rgb->blue);
    // The desktop's button face: the field's own palette already holds the last colour given to it.
    return QApplication::palette(widget).color(QPalette::Button);
}

// Everything the frame adds to the window lives here, owned by the window.
class Frame : public QObject
{
public:
    Frame(Quittung& window, ReceiptForm& form, Settings& settings, const ProgramPaths& paths)
        : QObject(&window), m_window(window), m_form(form), m_settings(settings), m_paths(paths),
          m_look(window.look()), m_appearance(form, settings, paths, window, m_look), m_vendor(vendorAddresses(paths))
    {
        registerCommands();
        buildToolbar();
        buildShortcutBarPopup();
        window.installEventFilter(this);
        m_look.addListener([this] { showLook(); });
        m_form.addListener([this](const FormChange& change) {
            if (change.aspect == FormAspect::Font || change.aspect == FormAspect::Background)
                showLook();
        });
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched == &m_window && event->type() == QEvent::WindowStateChange && m_window.isMinimized())
            toTray();
        return QObject::eventFilter(watched, event);
    }

    void openOptionen()
    {
        OptionenLogic logic(m_form, m_settings, m_paths, m_window, m_window);
        optionen window(&m_window, logic);
        try {
            window.laden();
        } catch (const RunError& error) {
            m_window.faultReporter().report(error, "optionen");
        }
        window.exec();
    }

private:
    void command(const std::string& name, std::function<void()> handler)
    {
        m_window.setCommand(name, std::move(handler));
    }

    void trigger(const std::string& name)
    {
        if (QAction* action = m_window.action(name); action && action->isEnabled())
            action->trigger();
    }

    void openUrl(const std::string& address) { QDesktopServices::openUrl(QUrl(qt(address))); }

    void registerCommands()
    {
        for (const auto& colour : receiptColours())
            command(std::string(colour.entry), [this, entry = colour.entry] { m_appearance.receiptColour(entry); });
        for (const auto& background : windowBackgrounds())
            command(std::string(background.entry),
                    [this, entry = background.entry] { m_appearance.windowBackground(entry); });
        command("schrift", [this] { m_appearance.schrift(); });
        m_window.setWindowOpener("optionen", [this] { openOptionen(); });
        command("optio", [this] { m_window.openWindow("optionen"); });
        command("pdf_Schablone", [this] {
            QDesktopServices::openUrl(QUrl::fromLocalFile(qt((m_paths.home() / "ZW-Schablone.pdf").string())));
        });
        command("www_start", [this] { openUrl(m_vendor.webHome); });
        command("www_download", [this] { openUrl(m_vendor.webDownloads); });
        command("www_neu", [this] { openUrl(m_vendor.webNews); });
        command("softbew", [this] { openUrl(m_vendor.ratingForm); });
        command("fehlmit", [this] { openUrl(m_vendor.errorForm); });
        m_window.setWindowOpener("info1", [this] {
            showAboutWindow(&m_window, "info1", "Informationen zum Programm", AboutText::Program, m_vendor.webHome);
        });
        m_window.setWindowOpener("Copyright", [this] {
            showAboutWindow(&m_window, "Copyright", "Copyright", AboutText::ProgramAndRights, m_vendor.webHome);
        });
        command("info", [this] { m_window.openWindow("info1"); });
        command("copy", [this] { m_window.openWindow("Copyright"); });
        m_window.shortcutBar().addKey({ShortcutPanel::Lists, 30}, "Command6_0", "Schriftart für Beleg", [this] { fontDialog(); });
    }

    // A toolbar handler reports its faults in the error window, as the toolbar always did.
    std::function<void()> guarded(std::function<void()> handler)
    {
        return [this, handler = std::move(handler)] {
            try {
                handler();
            } catch (const RunError& error) {
                m_window.faultReporter().report(error, "Quittung");
            }
        };
    }

    // A toolbar entry that does what a menu entry does, and is enabled with it.
    QAction* mirrorOf(QAction* entry, QWidget* owner, const QString& key, const QString& caption, const QIcon& icon,
                      const std::function<void()>& run, QAction* follows, bool enabledNow)
    {
        entry->setObjectName(key);
        entry->setText(caption);
        entry->setIcon(icon);
        entry->setEnabled(enabledNow);
        connect(entry, &QAction::triggered, owner, guarded(run));
        if (follows != nullptr)
            connect(follows, &QAction::changed, entry, [entry, follows] { entry->setEnabled(follows->isEnabled()); });
        return entry;
    }

    void buildToolbar()
    {
        auto* bar = new QToolBar("Coolbar1", &m_window);
        bar->setObjectName("Coolbar1");
        bar->setMovable(false);
        bar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
        m_window.addToolBar(Qt::TopToolBarArea, bar);
        QStyle* style = m_window.style();
        struct Key
        {
            const char* key;
            const char* caption;
            QStyle::StandardPixmap icon;
            const char* menuEntry; // the entry it does as, or nullptr
        };
        const Key keys[] = {
            {"neu_bar", "Neu", QStyle::SP_FileIcon, "neue"},
            {"open_bar", "Öffnen", QStyle::SP_DialogOpenButton, "oeffnen"},
            {"save_bar", "Speichern", QStyle::SP_DialogSaveButton, "save"},
            {"grafik_bar", "Kopieren", QStyle::SP_FileDialogDetailedView, "quikop"},
            {"einstellungen_bar", "Einstellungen", QStyle::SP_FileDialogInfoView, nullptr},
            {"aussteller_bar", "Aussteller", QStyle::SP_DirHomeIcon, "aussetller"},
            {"help_bar", "Hilfe", QStyle::SP_DialogHelpButton, "hel11"},
        };
        for (const auto& key : keys) {
            auto* entry = new QAction(bar);
            if (key.menuEntry == nullptr) {
                // The toolbar opens the settings without filling the type label first; the load fills it anyway.
                mirrorOf(entry, bar, key.key, key.caption, style->standardIcon(key.icon), [this] { openOptionen(); },
                         nullptr, true);
            } else {
                QAction* target = m_window.action(key.menuEntry);
                mirrorOf(entry, bar, key.key, key.caption, style->standardIcon(key.icon),
                         [this, name = std::string(key.menuEntry)] { trigger(name); }, target,
                         target && target->isEnabled());
            }
            bar->addAction(entry);
        }
        bar->addSeparator();

        auto* more = new QToolButton(bar);
        more->setObjectName("Coolbar1_dropdown");
        more->setText("Weitere Funktionen");
        more->setIcon(style->standardIcon(QStyle::SP_FileDialogListView));
        more->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
        more->setPopupMode(QToolButton::InstantPopup);
        // The drop-down is the shortcut bar's, where the parts' keys put their twins (places 20 to 25).
        ShortcutBar& shortcuts = m_window.shortcutBar();
        QMenu* menu = shortcuts.toolbarMenu();
        more->setMenu(menu);
        bar->addWidget(more);

        int place = 0;
        auto entry = [&](int at, const char* key, const char* caption, std::function<void()> run, QAction* follows,
                         bool enabledNow) {
            auto* action = new QAction(menu);
            mirrorOf(action, menu, key, caption, {}, std::move(run), follows, enabledNow);
            shortcuts.addToolbarEntry(at, action);
        };
        auto menuTwin = [&](const char* key, const char* caption, const char* menuEntry) {
            QAction* target = m_window.action(menuEntry);
            entry(place += 1, key, caption, [this, name = std::string(menuEntry)] { trigger(name); }, target,
                  target && target->isEnabled());
        };
        menuTwin("bmp_bm", "Als BMP Datei", "bmpdatei");
        menuTwin("jpg_bm", "Als JPG Datei", "jpeg");
        menuTwin("png_bm", "Als PNG Datei", "pngdatei");
        menuTwin("rtf_bm", "Als RTF Datei", "alsrtf");
        menuTwin("xml_bm", "Als XML Datei", "alsxml");
        menuTwin("pdf_bm", "Als PDF Datei", "alspdf");
        shortcuts.addToolbarSeparator(10);
        entry(24, "bm_schriftart", "Schriftart für Belege", [this] { fontDialog(); }, nullptr, true);
        shortcuts.addToolbarSeparator(30);
        const std::pair<const char*, StampChoice> stamps[] = {{"bm_keinstempel", StampChoice::None},
                                                              {"bm_original", StampChoice::Original},
                                                              {"bm_kopie", StampChoice::Copy}};
        const char* stampCaptions[] = {"Kein Stempel", "\"ORIGINAL\" auf Beleg 1", "\"KOPIE\" auf Beleg 1"};
        for (std::size_t i = 0; i < 3; ++i) {
            entry(31, stamps[i].first, stampCaptions[i],
                  [this, choice = stamps[i].second] { m_form.setStampChoice(choice); }, nullptr, true);
        }
        shortcuts.addToolbarSeparator(40);
        entry(41, "bm_kalenderbutton", "Kalenderbutton anzeigen",
              [this] { m_window.logic().calendarSwitchChanged(m_form.calendarButton() == 1 ? 0 : 1); }, nullptr, true);
    }

    void fontDialog()
    {
        bool ok = false;
        // The dialog lists the installed families: a substituted name (Arial) is preset as the family drawn for it.
        QFont preset(QFontInfo(QFont(qt(m_appearance.fontDialogPreset()))).family());
        QFont chosen = QFontDialog::getFont(&ok, preset, &m_window, "Schriftart");
        if (!ok)
            return; // a cancel changes nothing
        FontStyle style{chosen.bold(), chosen.italic(), chosen.underline(), chosen.strikeOut()};
        m_appearance.applyChosenFont({chosen.family().toStdString(), chosen.pointSize(), style});
    }

    // The receipt colour and the chosen font style on the form's widgets, after the form has drawn its own.
    void showLook()
    {
        ReceiptFormView* view = m_window.formView();
        if (view == nullptr)
            return;
        if (auto colour = m_look.fieldColour()) {
            for (F element : kColouredFields) {
                QWidget* widget = view->widgetOf(element);
                if (widget == nullptr)
                    continue;
                const QString name = colourOf(*colour, widget).name();
                if (qobject_cast<QPlainTextEdit*>(widget))
                    widget->setStyleSheet("QPlainTextEdit { background: " + name + "; }");
                else
                    widget->setStyleSheet("QLineEdit { background: " + name + "; }");
            }
        }
        const auto& style = m_look.fontStyle();
        const int size = m_form.pointSize(F::Text1);
        if (!style && size <= 0)
            return;
        for (std::size_t i = 0; i < kFormElementCount; ++i) {
            auto element = static_cast<F>(i);
            QWidget* widget = view->widgetOf(element);
            if (widget == nullptr || element == F::Image3 || element == F::Image6 || element == F::Image7)
                continue;
            QFont font = widget->font();
            if (style) {
                font.setBold(style->bold);
                font.setItalic(style->italic);
                font.setUnderline(style->underline);
                font.setStrikeOut(style->strikeOut);
            }
            if (size > 0 && element != F::Label1)
                font.setPointSize(size);
            widget->setFont(font);
        }
    }

    void buildShortcutBarPopup()
    {
        m_bar = &m_window.shortcutBar();
        m_popup = new QMenu(&m_window);
        m_popup->setObjectName("mnuPopupTop");
        auto* more = m_popup->addAction("&Mehr Buttons");
        more->setObjectName("mnuPopup_0");
        auto* fewer = m_popup->addAction("&Weniger Buttons");
        fewer->setObjectName("mnuPopup_1");
        m_popup->addSeparator();
        auto* navigation = m_popup->addAction("&Navigationsoption ansehen");
        navigation->setObjectName("mnuPopup_3");
        connect(more, &QAction::triggered, this, [this] { setVisibleHeaders(m_bar->count() + 1); });
        connect(fewer, &QAction::triggered, this, [this] { setVisibleHeaders(m_bar->count() - 1); });
        connect(navigation, &QAction::triggered, this, [this] { navigationDialog(); });
        auto* button = new QToolButton(m_bar);
        button->setObjectName("ShortcutBar1_menu");
        button->setArrowType(Qt::DownArrow);
        button->setAutoRaise(true);
        button->setToolTip("Navigationsoptionen");
        connect(button, &QToolButton::clicked, this,
                [this, button] { m_popup->popup(button->mapToGlobal(QPoint(0, button->height()))); });
        m_menuButton = button;
        auto* keeper = new CornerKeeper(button, m_bar);
        m_bar->installEventFilter(keeper);
        keeper->place(m_bar);
    }

    // Keeps the menu button in the shortcut bar's lower right corner.
    class CornerKeeper : public QObject
    {
    public:
        CornerKeeper(QWidget* button, QWidget* bar) : QObject(bar), m_button(button) {}
        bool eventFilter(QObject* watched, QEvent* event) override
        {
            if (event->type() == QEvent::Resize || event->type() == QEvent::Show ||
                event->type() == QEvent::LayoutRequest)
                place(static_cast<QWidget*>(watched));
            return false;
        }

        void place(QWidget* bar)
        {
            m_button->resize(m_button->sizeHint());
            m_button->move(bar->width() - m_button->width() - 2, bar->height() - m_button->height() - 2);
            m_button->show();
            m_button->raise();
        }

    private:
        QWidget* m_button;
    };

    // The bar shows its first `count` groups; the others wait aside, in order, until they are asked back.
    void setVisibleHeaders(int count)
    {
        const int total = m_bar->count() + static_cast<int>(m_hidden.size());
        count = std::clamp(count, 1, total);
        while (m_bar->count() > count) {
            int last = m_bar->count() - 1;
            m_hidden.insert(m_hidden.begin(), {m_bar->widget(last), m_bar->itemText(last)});
            m_bar->removeItem(last);
        }
        while (m_bar->count() < count && !m_hidden.empty()) {
            m_bar->addItem(m_hidden.front().first, m_hidden.front().second);
            m_hidden.erase(m_hidden.begin());
        }
    }

    void navigationDialog()
    {
        std::vector<QString> groups;
        for (int i = 0; i < m_bar->count(); ++i)
            groups.push_back(m_bar->itemText(i));
        for (const auto& hidden : m_hidden)
            groups.push_back(hidden.second);
        if (const auto count = askVisibleGroups(&m_window, groups, m_bar->count()))
            setVisibleHeaders(*count);
    }

    void toTray()
    {
        if (m_tray == nullptr) {
            m_tray = new QSystemTrayIcon(m_window.windowIcon().isNull()
                                             ? m_window.style()->standardIcon(QStyle::SP_ComputerIcon)
                                             : m_window.windowIcon(),
                                         this);
            m_tray->setObjectName("sevTray1");
            m_tray->setContextMenu(trayMenu());
            connect(m_tray, &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
                if (reason == QSystemTrayIcon::DoubleClick)
                    fromTray();
            });
        }
        const QString title = "Zettelwerk V" + qt(versionText());
        m_tray->setToolTip(title);
        m_tray->show();
        m_tray->showMessage(title, "Hier mit rechter Maustaste klicken\num das Menü zu öffnen...");
        // Without a tray on the desktop the window stays minimised rather than vanishing for good.
        if (QSystemTrayIcon::isSystemTrayAvailable())
            m_window.hide();
    }

    void fromTray()
    {
        m_window.showNormal();
        m_window.activateWindow();
        if (m_tray)
            m_tray->hide();
    }

    QMenu* trayMenu()
    {
        auto* menu = new QMenu(&m_window);
        menu->setObjectName("trayMenu");
        auto add = [&](const char* key, const char* caption, std::function<void()> run, const char* follows) {
            QAction* entry = menu->addAction(caption);
            entry->setObjectName(key);
            connect(entry, &QAction::triggered, this, std::move(run));
            if (follows != nullptr) {
                QAction* target = m_window.action(follows);
                entry->setEnabled(target && target->isEnabled());
                if (target)
                    connect(target, &QAction::changed, entry, [entry, target] { entry->setEnabled(target->isEnabled()); });
            }
        };
        add("open", "Zettelwerk &öffnen...", [this] { fromTray(); }, nullptr);
        menu->addSeparator();
        add("einstellungen", "&Einstellungen", [this] { m_window.openWindow("optionen"); }, nullptr);
        add("hilfe", "&Hilfe öffnen", [this] { trigger("hel11"); }, "hel11");
        add("copyr", "&Copyright", [this] { trigger("copy"); }, "copy");
        menu->addSeparator();
        add("upd", "Online-&Update aufrufen...", [this] { trigger("updaten"); }, "updaten");
        menu->addSeparator();
        // The tray's exit asks no question.
        add("exit", "Programm &beenden", [this] { m_window.unloadAll(); }, nullptr);
        return menu;
    }

    Quittung& m_window;
    ReceiptForm& m_form;
    Settings& m_settings;
    const ProgramPaths& m_paths;
    ReceiptLook& m_look;
    AppearanceLogic m_appearance;
    VendorAddresses m_vendor;
    QToolBox* m_bar = nullptr;
    QMenu* m_popup = nullptr;
    QToolButton* m_menuButton = nullptr;
    std::vector<std::pair<QWidget*, QString>> m_hidden;
    QSystemTrayIcon* m_tray = nullptr;
};

} // namespace

void installFrameCommands(const PartContext& context)
{
    new Frame(context.window, context.form, context.settings, context.paths);
}

} // namespace zw
