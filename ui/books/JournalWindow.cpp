#include "ui/books/JournalWindow.h"

#include <QAbstractTableModel>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>
#include <vector>

#include "books/JournalCheck.h"
#include "core/FormHost.h"
#include "core/RunError.h"
#include "ui/frame/MessageDialog.h"
#include "ui/frame/QtText.h"

namespace zw {

// The journal's entries as a table; cells are made when shown, so a long journal lists at once.
class JournalModel : public QAbstractTableModel
{
public:
    using QAbstractTableModel::QAbstractTableModel;

    void setEntries(std::vector<JournalEntry> entries)
    {
        beginResetModel();
        m_entries = std::move(entries);
        endResetModel();
    }
    int rowCount(const QModelIndex& parent) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(m_entries.size());
    }
    int columnCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : kJournalColumnCount; }
    QVariant data(const QModelIndex& index, int role) const override
    {
        if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
            return {};
        return qt(entryCells(m_entries.at(static_cast<std::size_t>(index.row()))).at(static_cast<std::size_t>(index.column())));
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        static const char* const kCaptions[kJournalColumnCount] = {"Nr.",   "Zeit",   "Benutzer", "Vorgang",
                                                                   "Zeile", "Vorher", "Nachher"};
        if (role != Qt::DisplayRole || orientation != Qt::Horizontal)
            return QAbstractTableModel::headerData(section, orientation, role);
        return QString::fromUtf8(kCaptions[section]);
    }

private:
    std::vector<JournalEntry> m_entries;
};

JournalWindow::JournalWindow(QWidget* parent, const ProgramPaths& paths) : QDialog(parent), m_paths(paths)
{
    setWindowTitle(QStringLiteral("Änderungsprotokoll"));
    auto* layout = new QVBoxLayout(this);
    auto* filter = new QHBoxLayout;
    m_from = new QLineEdit(this);
    m_to = new QLineEdit(this);
    for (auto* field : {m_from, m_to}) {
        field->setPlaceholderText(QStringLiteral("TT.MM.JJJJ"));
        field->setMaximumWidth(120);
    }
    auto* show = new QPushButton(QStringLiteral("&Anzeigen"), this);
    filter->addWidget(new QLabel(QStringLiteral("Von:"), this));
    filter->addWidget(m_from);
    filter->addWidget(new QLabel(QStringLiteral("Bis:"), this));
    filter->addWidget(m_to);
    filter->addWidget(show);
    filter->addStretch();
    layout->addLayout(filter);

    m_model = new JournalModel(this);
    m_table = new QTableView(this);
    m_table->setModel(m_model);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setDefaultSectionSize(m_table->fontMetrics().height() + 6);
    m_table->horizontalHeader()->setStretchLastSection(true);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    layout->addWidget(m_table, 1);

    auto* bottom = new QHBoxLayout;
    m_verdict = new QLabel(this);
    m_verdict->setWordWrap(true);
    m_verdict->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* check = new QPushButton(QStringLiteral("&Prüfen"), this);
    auto* close = new QPushButton(QStringLiteral("&Schließen"), this);
    bottom->addWidget(m_verdict, 1);
    bottom->addWidget(check);
    bottom->addWidget(close);
    layout->addLayout(bottom);

    connect(show, &QPushButton::clicked, this, &JournalWindow::showEntries);
    connect(m_from, &QLineEdit::returnPressed, this, &JournalWindow::showEntries);
    connect(m_to, &QLineEdit::returnPressed, this, &JournalWindow::showEntries);
    connect(check, &QPushButton::clicked, this, &JournalWindow::verify);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    resize(900, 480);
    showEntries();
    verify();
    for (int column = 0; column < 5; ++column)
        m_table->resizeColumnToContents(column);
    m_table->setColumnWidth(5, 220);
}

JournalWindow::~JournalWindow() = default;

void JournalWindow::showEntries()
{
    auto listing = listJournal(m_paths, m_from->text().toStdString(), m_to->text().toStdString());
    if (!listing.problem.empty()) {
        MessageDialog::messageBox(this, listing.problem, MessageStyle::Warning, "Änderungsprotokoll");
        return;
    }
    m_model->setEntries(std::move(listing.entries));
    m_table->scrollToBottom();
}

void JournalWindow::verify()
{
    try {
        const auto verdict = verifyJournal(m_paths);
        m_verdict->setText(qt(verdict.message));
        m_verdict->setStyleSheet(verdict.sound ? QString() : QStringLiteral("color: #c00000; font-weight: bold;"));
    } catch (const RunError& error) {
        m_verdict->setText(qt(error.description()));
        m_verdict->setStyleSheet(QStringLiteral("color: #c00000; font-weight: bold;"));
    }
}

} // namespace zw
