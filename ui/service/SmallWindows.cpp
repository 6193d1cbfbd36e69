#include "ui/service/SmallWindows.h"

#include <QApplication>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QLinearGradient>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QTextEdit>
#include <QTimer>
#include <QVBoxLayout>

#include "app/SettingsStore.h"
#include "app/ProgramPaths.h"
#include "app/TextFile.h"
#include "app/Version.h"
#include "core/ReceiptForm.h"
#include "core/RunError.h"
#include "core/Settings.h"
#include "service/Autostart.h"
#include "ui/frame/FaultTrap.h"
#include "ui/frame/QtText.h"
#include "ui/frame/Quittung.h"
#include "ui/frame/ShortcutBar.h"
#include "ui/frame/fehlerform.h"

namespace zw {

namespace {

QPushButton* key(const char* name, const QString& caption, QWidget* owner)
{
    auto* button = new QPushButton(caption, owner);
    button->setObjectName(name);
    return button;
}

QString lines(const std::string& text)
{
    QString shown = qt(text);
    shown.replace("\r\n", "\n");
    return shown;
}

} // namespace

feldbezeichnung::feldbezeichnung(Settings& settings, ReceiptForm& form, QWidget* parent)
    : QDialog(parent), m_settings(settings), m_form(form)
{
    setObjectName("feldbezeichnung");
    setWindowTitle("Feldbezeichnung ändern");
    setModal(true);
    auto* frame = new QGroupBox(" Feldbezeichnungen ", this);
    auto* grid = new QGridLayout(frame);
    const auto current = currentFieldLabels(form);
    for (std::size_t i = 0; i < m_fields.size(); ++i) {
        const int row = static_cast<int>(i);
        auto* caption = new QLabel(QString("Bezeichnung %1:").arg(row + 1, 2, 10, QChar('0')), frame);
        m_fields[i] = new QLineEdit(qt(current[i]), frame);
        m_fields[i]->setObjectName(QString("sevText%1").arg(row + 1));
        m_fields[i]->setMinimumWidth(260);
        caption->setBuddy(m_fields[i]);
        grid->addWidget(caption, row, 0);
        grid->addWidget(m_fields[i], row, 1);
        grid->addWidget(new QLabel(qt(kFieldLabelHints[i]), frame), row, 2);
    }
    m_bar = new QProgressBar(this);
    m_bar->setObjectName("ProgressBar1");
    m_bar->setRange(0, 100);
    m_bar->hide();
    auto* saveKey = key("Command3", "&Speichern", this);
    auto* resetKey = key("Command2", "Zu&rücksetzen", this);
    resetKey->setToolTip("Originalbezeichnungen werden eingelesen.");
    auto* back = key("Command1", "&Zurück", this);
    m_keys = {saveKey, resetKey, back};
    auto* keys = new QHBoxLayout;
    keys->addWidget(saveKey);
    keys->addWidget(resetKey);
    keys->addWidget(m_bar, 1);
    keys->addStretch();
    keys->addWidget(back);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(frame);
    layout->addLayout(keys);
    connect(saveKey, &QPushButton::clicked, this, &feldbezeichnung::save);
    connect(resetKey, &QPushButton::clicked, this, &feldbezeichnung::reset);
    connect(back, &QPushButton::clicked, this, &QDialog::reject);
}

void feldbezeichnung::reset()
{
    const auto texts = resetFieldLabels();
    for (std::size_t i = 0; i < m_fields.size(); ++i)
        m_fields[i]->setText(qt(texts[i]));
}

void feldbezeichnung::save()
{
    for (auto* button : m_keys)
        button->hide();
    m_bar->setValue(0);
    m_bar->show();
    FieldLabelTexts texts;
    for (std::size_t i = 0; i < m_fields.size(); ++i)
        texts[i] = m_fields[i]->text().toStdString();
    QApplication::setOverrideCursor(Qt::WaitCursor);
    saveFieldLabels(m_settings, m_form, texts, [this](int value) {
        m_bar->setValue(value);
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    });
    accept();
    QApplication::restoreOverrideCursor();
}

frmTipp::frmTipp(const ProgramPaths& paths, Settings& settings, FormHost& host, Random& random, QWidget* parent)
    : QDialog(parent), m_host(host)
{
    setObjectName("frmTipp");
    setWindowTitle("Tipp des Tages");
    setModal(true);
    m_caption = new QLabel(this);
    m_caption->setObjectName("lblTipCaption");
    QFont bold = m_caption->font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.2);
    m_caption->setFont(bold);
    m_content = new QTextEdit(this);
    m_content->setObjectName("txtTipContent");
    m_content->setReadOnly(true);
    m_content->setMinimumSize(420, 150);
    m_count = new QLabel(this);
    m_count->setObjectName("lblCount");

    m_bottom = new QWidget(this);
    m_bottom->setObjectName("picBottom");
    auto* startUp = new QCheckBox("Tipps beim &Programmstart anzeigen", m_bottom);
    startUp->setObjectName("chkLoadTipsAtStartup");
    startUp->setChecked(tipsAtStartup(settings));
    auto* previous = key("xpButton1", "&Vorheriger Tipp", m_bottom);
    auto* next = key("cmdNextTip", "&Nächster Tipp", m_bottom);
    auto* ok = key("cmdOK", "&OK", m_bottom);
    ok->setDefault(true);
    auto* bottom = new QHBoxLayout(m_bottom);
    bottom->addWidget(startUp);
    bottom->addStretch();
    bottom->addWidget(previous);
    bottom->addWidget(next);
    bottom->addWidget(ok);

    auto* layout = new QVBoxLayout(this);
    auto* head = new QHBoxLayout;
    head->addWidget(m_caption, 1);
    head->addWidget(m_count);
    layout->addLayout(head);
    layout->addWidget(m_content, 1);
    layout->addWidget(m_bottom);

    connect(startUp, &QCheckBox::toggled, this, [&settings](bool on) { setTipsAtStartup(settings, on); });
    connect(next, &QPushButton::clicked, this, [this] {
        m_tips.next();
        showTip();
    });
    connect(previous, &QPushButton::clicked, this, [this] {
        m_tips.previous();
        showTip();
    });
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);

    if (m_tips.LoadTips(paths.dataFile("Tipofday.txt"), [source = &random] { return source->next(); }) &&
        m_tips.count() > 0)
        showTip();
}

void frmTipp::showTip()
{
    // A tip that cannot be shown is a message; the window stays.
    faulttrap::trapped([this] {
        const auto shown = m_tips.DisplayCurrentTip();
        m_caption->setText(qt(shown.caption));
        m_content->setPlainText(lines(shown.content));
        m_count->setText(qt(shown.count));
    })();
}

void frmTipp::paintEvent(QPaintEvent* event)
{
    QDialog::paintEvent(event);
    QPainter painter(this);
    const QRect area = m_bottom->geometry();
    QLinearGradient gradient(area.topLeft(), area.bottomLeft());
    gradient.setColorAt(0, QColor(255, 231, 162));
    gradient.setColorAt(1, QColor(255, 172, 66));
    painter.fillRect(area, gradient);
}

whatsnew::whatsnew(QWidget* parent) : QDialog(parent)
{
    setObjectName("whatsnew");
    setWindowTitle("Was ist neu in dieser Version?");
    setModal(true);
    auto* version =
        new QLabel(QString("%1 . %2 . %3").arg(kVersionMajor).arg(kVersionMinor).arg(kVersionRevision), this);
    version->setObjectName("Label2");
    QFont bold = version->font();
    bold.setBold(true);
    version->setFont(bold);
    m_text = new QTextEdit(this);
    m_text->setObjectName("sevText1");
    m_text->setReadOnly(true);
    m_text->setMinimumSize(560, 470); // the whole news of a version without scrolling
    auto* close = key("xpButton1", "&Schließen", this);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    auto* keys = new QHBoxLayout;
    keys->addStretch();
    keys->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(version);
    layout->addWidget(m_text, 1);
    layout->addLayout(keys);
}

bool whatsnew::load(const ProgramPaths& paths)
{
    m_text->setPlainText(lines(readTextFile(paths.home() / "neu_in_dieser_version.txt")));
    return true;
}

autostart1::autostart1(const std::string& programPath, FormHost& host, QWidget* parent)
    : QDialog(parent), m_host(host)
{
    setObjectName("autostart1");
    setWindowTitle("Autostartfunktion");
    setModal(true);
    auto* text = new QLabel("Soll das Programm beim Anmelden am Desktop automatisch gestartet werden?", this);
    text->setWordWrap(true);
    m_filename = new QLineEdit(qt(programPath), this);
    m_filename->setObjectName("txtFilename");
    m_filename->setReadOnly(true);
    m_filename->setToolTip("Hier kann nichts verändert werden.");
    m_filename->setMinimumWidth(m_filename->fontMetrics().horizontalAdvance(m_filename->text()) + 24);
    m_add = key("Command1", "&Eintragen", this);
    auto* remove = key("Command3", "E&ntfernen", this);
    auto* close = key("Command2", "&Schließen", this);
    auto* keys = new QHBoxLayout;
    keys->addWidget(m_add);
    keys->addWidget(remove);
    keys->addStretch();
    keys->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(text);
    layout->addWidget(m_filename);
    layout->addLayout(keys);
    connect(m_add, &QPushButton::clicked, this, [this] {
        const std::string path = m_filename->text().toStdString();
        if (SetAutoRun(autostartFolder(), autostartName(path), path)) {
            m_host.showMessage("Der Eintrag war erfolgreich.", MessageStyle::Information, "Autostart");
            m_add->setEnabled(false);
        } else {
            m_host.showMessage("Der Eintrag ist fehlgeschlagen!", MessageStyle::Information, "Autostart");
        }
    });
    connect(remove, &QPushButton::clicked, this, [this] {
        RemoveAutoRun(autostartFolder(), autostartName(m_filename->text().toStdString()));
        m_host.showMessage("Der Eintrag wurde entfernt!", MessageStyle::Information, "Autostart");
        m_add->setEnabled(true);
    });
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
}

void installSmallWindows(const PartContext& context)
{
    Quittung& window = context.window;
    ReceiptForm& form = context.form;
    Settings& settings = context.settings;
    const ProgramPaths& paths = context.paths;
    window.setWindowOpener("feldbezeichnung", [&window, &form, &settings] {
        feldbezeichnung editor(settings, form, &window);
        editor.exec();
    });
    window.shortcutBar().addKey({ShortcutPanel::Lists, 50}, "Command6_2", "Feldbezeichnungen ändern",
                                [&window] { window.openWindow("feldbezeichnung"); },
                                ToolbarTwin{"bm_feldbez", "Feldbezeichnungen ändern", 22});
    window.setWindowOpener("frmTipp", [&window, &settings, &paths] {
        frmTipp tip(paths, settings, window, window.random(), &window);
        tip.exec();
    });
    // The tip comes up in front of the main window, once that is shown.
    window.setStartStep(StartStep::ShowTipWindow,
                        [&window] { QTimer::singleShot(0, &window, [&window] { window.openWindow("frmTipp"); }); });
    window.setCommand("tipppp", [&window, &settings] {
        if (!tipsAtStartup(settings))
            window.showMessage(tipsOffNotice(), MessageStyle::Information, "Tipp des Tages");
        else
            window.openWindow("frmTipp");
    });
    window.setWindowOpener("whatsnew", [&window, &paths] {
        whatsnew news(&window);
        try {
            news.load(paths);
        } catch (const RunError& error) {
            window.faultReporter().report(error, "whatsnew");
        }
        news.exec();
    });
    window.setCommand("whatistnew", [&window] { window.openWindow("whatsnew"); });
    window.setWindowOpener("autostart1", [&window] {
        autostart1 autostart(QApplication::applicationFilePath().toStdString(), window, &window);
        autostart.exec();
    });
    window.setCommand("autosta", [&window] { window.openWindow("autostart1"); });
}

} // namespace zw
