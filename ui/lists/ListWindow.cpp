#include "ui/lists/ListWindow.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QStackedWidget>
#include <QStyle>
#include <QTableView>
#include <QTextBrowser>
#include <QToolBar>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>
#include <map>

#include "app/TextFile.h"
#include "app/FaultReporter.h"
#include "app/ProgramPaths.h"
#include "core/FormHost.h"
#include "core/RunError.h"
#include "ui/frame/FaultTrap.h"
#include "ui/frame/MessageDialog.h"
#include "ui/frame/QtText.h"
#include "ui/lists/frmReportSetup.h"

namespace zw {

// The grid: the table's cells, edited in place; each edit is handed on to be saved.
class ListModel : public QAbstractTableModel
{
public:
    ListModel(ListTable& table, std::function<void()> edited, QObject* parent)
        : QAbstractTableModel(parent), m_table(table), m_edited(std::move(edited))
    {
    }

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : m_table.rowCount(); }
    int columnCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(m_table.kind().columns.size());
    }
    QVariant data(const QModelIndex& index, int role) const override
    {
        if (!index.isValid())
            return {};
        const std::string& text =
            m_table.rows()[static_cast<std::size_t>(index.row())][static_cast<std::size_t>(index.column())];
        if (role == Qt::DisplayRole || role == Qt::EditRole)
            return qt(text);
        if (role == Qt::ToolTipRole) {
            const std::string hint = linkHint(text);
            return hint.empty() ? QVariant() : QVariant(qt(hint));
        }
        return {};
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        if (role != Qt::DisplayRole)
            return {};
        if (orientation == Qt::Vertical)
            return section + 1;
        return qt(m_table.kind().columns[static_cast<std::size_t>(section)].heading);
    }
    Qt::ItemFlags flags(const QModelIndex& index) const override
    {
        return QAbstractTableModel::flags(index) | Qt::ItemIsEditable;
    }
    bool setData(const QModelIndex& index, const QVariant& value, int role) override
    {
        if (role != Qt::EditRole || !index.isValid())
            return false;
        const std::string text = value.toString().toStdString();
        if (text == m_table.rows()[static_cast<std::size_t>(index.row())][static_cast<std::size_t>(index.column())])
            return true;
        m_table.setCell(index.row(), index.column(), text);
        emit dataChanged(index, index);
        m_edited();
        return true;
    }
    void reset(const std::function<void()>& change)
    {
        beginResetModel();
        change();
        endResetModel();
    }

private:
    ListTable& m_table;
    std::function<void()> m_edited;
};

namespace {

QIcon toolIcon(const QStyle* style, std::string_view key)
{
    const QStyle::StandardPixmap pixmap = key == "save_grid"   ? QStyle::SP_DialogSaveButton
                                          : key == "neu_grid"  ? QStyle::SP_FileIcon
                                          : key == "grid_edit" ? QStyle::SP_FileDialogDetailedView
                                          : key == "grid_weg"  ? QStyle::SP_TrashIcon
                                          : key == "hinzu_bar" ? QStyle::SP_ArrowForward
                                                               : QStyle::SP_DialogCloseButton;
    return style->standardIcon(pixmap);
}

} // namespace

ListWindow::ListWindow(const ListKind& kind, ReceiptForm& form, FormHost& host, FaultReporter& faults,
                       const ProgramPaths& paths, QWidget* parent)
    : QDialog(parent), m_table(kind), m_form(form), m_host(host), m_faults(faults), m_file(paths.home() / kind.file),
      m_reportFile(paths.home() / "report" / "report.htm")
{
    setObjectName(qt(kind.window));
    setWindowTitle(qt(kind.caption));
    setSizeGripEnabled(true);

    auto* toolbar = new QToolBar(this);
    toolbar->setObjectName("Coolbar1");
    toolbar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    const std::map<std::string_view, std::function<void()>> actions{
        {"save_grid", [this] { save(GridOperation::Save); }},
        {"neu_grid", [this] { newRow(); }},
        {"grid_edit", [this] { MessageDialog::showMessage(this, kEditText, MessageStyle::Information, kEditTitle); }},
        {"grid_weg", [this] { deleteRows(); }},
        {"hinzu_bar", [this] { takeOver(); }},
        {"schlie_bar",
         [this] {
             save(GridOperation::Save);
             close();
         }},
    };
    for (const ListToolKey& key : listToolKeys()) {
        auto* action = toolbar->addAction(toolIcon(style(), key.key), qt(key.caption));
        action->setObjectName(qt(key.key));
        action->setToolTip(qt(key.toolTip));
        connect(action, &QAction::triggered, this, faulttrap::trapped(actions.at(key.key)));
    }
    for (QAction* action : toolbar->actions()) {
        if (auto* button = qobject_cast<QToolButton*>(toolbar->widgetForAction(action)))
            button->setToolButtonStyle(action->text().isEmpty() ? Qt::ToolButtonIconOnly
                                                                : Qt::ToolButtonTextBesideIcon);
    }

    m_model = new ListModel(m_table, [this] { save(GridOperation::Save); }, this);
    m_grid = new QTableView(this);
    m_grid->setObjectName("Grid");
    m_grid->setModel(m_model);
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                            QAbstractItemView::AnyKeyPressed);
    m_grid->verticalHeader()->setDefaultSectionSize(m_grid->fontMetrics().height() + 6);
    m_grid->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed); // 100,000 rows stay fluid
    m_grid->horizontalHeader()->setStretchLastSection(true);
    for (std::size_t i = 0; i < kind.columns.size(); ++i)
        m_grid->setColumnWidth(static_cast<int>(i), kind.columns[i].widthTwips / 15);

    auto* bottom = new QHBoxLayout;
    if (kind.hasAmounts) {
        auto* label = new QLabel("Der eingegebene Betrag ist:", this);
        label->setObjectName("Label1");
        auto* net = new QRadioButton("Netto", this);
        net->setObjectName("xpOption2");
        net->setChecked(true);
        m_gross = new QRadioButton("Brutto", this);
        m_gross->setObjectName("xpOption1");
        bottom->addWidget(label);
        bottom->addWidget(net);
        bottom->addWidget(m_gross);
    }
    bottom->addStretch();

    // picHTML: the start button and, while a report is written, the progress picture with its abort button.
    m_reportPanels = new QStackedWidget(this);
    m_reportPanels->setObjectName("picHTML");
    auto* start = new QPushButton("&Bericht erstellen", this);
    start->setObjectName("cmdHTMLStart");
    start->setToolTip("<b>HTML-Bericht</b><br>Erzeugt einen HTML-Bericht über alle Artikel.");
    connect(start, &QPushButton::clicked, this, &ListWindow::startReport);
    auto* running = new QWidget(this);
    auto* runningLayout = new QHBoxLayout(running);
    runningLayout->setContentsMargins(0, 0, 0, 0);
    m_progress = new QLabel(running);
    m_progress->setObjectName("picProgress");
    m_progress->setFixedSize(160, 20);
    m_progressText = new QLabel("Seite 1 von 1", running);
    m_progressText->setObjectName("lblHTMLProgress");
    auto* abort = new QPushButton("&Abbrechen", running);
    abort->setObjectName("cmdHTMLAbort");
    // The old button only marked itself; nothing read the mark, so a running report goes on.
    connect(abort, &QPushButton::clicked, abort, [abort] { abort->setProperty("Tag", "stop"); });
    runningLayout->addWidget(m_progressText);
    runningLayout->addWidget(m_progress);
    runningLayout->addWidget(abort);
    m_reportPanels->addWidget(start);
    m_reportPanels->addWidget(running);
    m_reportPanels->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    bottom->addWidget(m_reportPanels);

    auto* layout = new QVBoxLayout(this);
    layout->setMenuBar(toolbar);
    layout->addWidget(m_grid, 1);
    layout->addLayout(bottom);

    int width = m_grid->verticalHeader()->sizeHint().width() + 40;
    for (const ListColumn& column : kind.columns)
        width += column.widthTwips / 15;
    resize(std::max(width, 520), 420);
    load();
}

ListWindow::~ListWindow()
{
    // The grid goes before the table it shows: hiding an open cell editor on the way out still reads cells.
    delete m_grid;
}

void ListWindow::load()
{
    QApplication::setOverrideCursor(Qt::WaitCursor);
    try {
        m_model->reset([this] { m_table.load(m_file); });
    } catch (const RunError& error) {
        // The load traps its faults: the error window, then the window opens with what could be read.
        QApplication::restoreOverrideCursor();
        m_faults.report(error, m_table.kind().window);
        QApplication::setOverrideCursor(Qt::WaitCursor);
    }
    std::error_code ignored;
    std::filesystem::create_directories(m_reportFile.parent_path(), ignored);
    QApplication::restoreOverrideCursor();
}

void ListWindow::save(GridOperation operation)
{
    QApplication::setOverrideCursor(Qt::WaitCursor);
    try {
        // Rows another program filed meanwhile come in with the save; the grid then shows them.
        if (m_table.save(m_file))
            m_model->reset([] {});
    } catch (const RunError& error) {
        QApplication::restoreOverrideCursor();
        MessageDialog::showMessage(this, gridErrorText(operation, error.number(), error.description()),
                                   MessageStyle::Error, kErrorTitle);
        return;
    }
    QApplication::restoreOverrideCursor();
}

void ListWindow::newRow()
{
    const int row = m_table.rowCount();
    m_model->reset([this, row] { m_table.insertRow(row); });
    const QModelIndex first = m_model->index(row, 0);
    m_grid->setCurrentIndex(first);
    m_grid->edit(first);
}

void ListWindow::deleteRows()
{
    std::vector<int> rows;
    for (const QModelIndex& index : m_grid->selectionModel()->selectedRows())
        rows.push_back(index.row());
    if (rows.empty() && m_grid->currentIndex().isValid())
        rows.push_back(m_grid->currentIndex().row());
    if (rows.empty())
        return;
    // The grid's own question: the platform's box with "Ja" and "Nein".
    if (MessageDialog::messageBox(this, deleteQuestion(static_cast<int>(rows.size())),
                                  static_cast<int>(MessageStyle::QuestionYesNo), kDeleteTitle) != kAnswerYes)
        return;
    m_model->reset([this, &rows] { m_table.removeRows(rows); });
    save(GridOperation::Delete);
}

void ListWindow::takeOver()
{
    const QModelIndex current = m_grid->currentIndex();
    if (!current.isValid())
        return;
    takeOverRow(m_table, current.row(), m_gross != nullptr && m_gross->isChecked(), m_form);
    if (!fieldWritten)
        return;
    // Writing a field ran its change event, and with it the completion of the fields that have one.
    if (m_table.kind().hasAmounts) {
        fieldWritten(FormElement::Text7);
    } else {
        fieldWritten(FormElement::Text5);
        fieldWritten(FormElement::Text6);
    }
}

void ListWindow::paintProgress(int percent)
{
    QPixmap picture(m_progress->size());
    picture.fill(palette().color(QPalette::Base));
    QPainter painter(&picture);
    painter.fillRect(QRect(0, 0, picture.width() * std::clamp(percent, 0, 100) / 100, picture.height()),
                     palette().color(QPalette::Highlight));
    painter.setPen(palette().color(QPalette::Text));
    painter.drawRect(picture.rect().adjusted(0, 0, -1, -1));
    painter.drawText(picture.rect(), Qt::AlignCenter, QString::number(percent) + " %");
    painter.end();
    m_progress->setPixmap(picture);
}

void ListWindow::startReport()
{
    frmReportSetup setup(this);
    if (setup.exec() != QDialog::Accepted)
        return;
    makeReport(setup.options());
}

bool ListWindow::makeReport(const ReportOptions& options)
{
    findChild<QPushButton*>("cmdHTMLAbort")->setProperty("Tag", QString());
    m_reportPanels->setCurrentIndex(1);
    m_progressText->clear();
    paintProgress(0);
    QApplication::processEvents();

    ReportStyle look;
    look.fontFamily = m_grid->font().family().toStdString();
    look.fontPoints = std::max(1, m_grid->font().pointSize());
    look.text = m_grid->palette().color(QPalette::Text).name().toStdString();
    look.background = m_grid->palette().color(QPalette::Base).name().toStdString();
    look.heading = m_grid->palette().color(QPalette::Button).name().toStdString();
    const auto progress = [this](int done, int total, int page, int pages) {
        m_progressText->setText(QString("Seite %1 von %2").arg(page).arg(pages));
        paintProgress(progressPercent(done, 0, total));
        QApplication::processEvents();
    };
    const bool written = faulttrap::trapped([&] {
        writeListReport(m_reportFile, m_table, options, &look, todayText(), m_sum, progress,
                        [&] { showReport(m_reportFile, options.inBrowser); });
        return true;
    })();
    m_reportPanels->setCurrentIndex(0);
    if (written && shownWhenFinished(options, reportPageCount(m_table.rowCount(), options.rowsPerPage)))
        showReport(m_reportFile, options.inBrowser);
    return written;
}

void ListWindow::showReport(const std::filesystem::path& file, bool inBrowser)
{
    const QUrl url = QUrl::fromLocalFile(QString::fromStdString(file.string()));
    if (inBrowser) {
        QDesktopServices::openUrl(url);
        return;
    }
    auto* view = findChild<QDialog*>("reportView");
    if (view == nullptr) {
        view = new QDialog(this);
        view->setObjectName("reportView");
        view->setWindowTitle("HTML-Bericht");
        auto* browser = new QTextBrowser(view);
        browser->setOpenExternalLinks(true);
        (new QVBoxLayout(view))->addWidget(browser);
        view->resize(760, 560);
    }
    auto* browser = view->findChild<QTextBrowser*>();
    // The toolkit's HTML view knows no CSS widths for tables; the file itself stays plain HTML 5.
    QString html;
    if (!faulttrap::trapped([&] {
            html = qt(readFileBytes(file));
            return true;
        })())
        return;
    html.replace("<table class=\"", "<table width=\"100%\" class=\"");
    browser->setHtml(html);
    view->show();
    view->raise();
}

void ListWindow::closeEvent(QCloseEvent* event)
{
    if (auto* editor = m_grid->focusWidget(); editor && editor != m_grid)
        m_grid->setFocus(); // an open cell editor hands its text to the grid before the window goes
    QDialog::closeEvent(event);
}

} // namespace zw
