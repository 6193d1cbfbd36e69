#include "ui/lists/autocom_bear.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

#include "app/FaultReporter.h"
#include "core/RunError.h"
#include "ui/frame/FaultTrap.h"
#include "ui/frame/QtText.h"
#include "ui/frame/WindowTitle.h"

namespace zw {

autocom_bear::autocom_bear(Autocomplete& list, FormHost& host, FaultReporter& faults, QWidget* parent)
    : QDialog(parent), m_editor(list, host), m_host(host)
{
    setObjectName("autocom_bear");
    setWindowTitle("Autovervollständigungsdatei bearbeiten");

    m_text1 = new QLineEdit(this);
    m_text1->setObjectName("Text1");
    m_text1->setToolTip("<b>Eintrag</b><br>Hinzufügen in die Liste.");
    m_list1 = new QListWidget(this);
    m_list1->setObjectName("List1");
    m_list1->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list1->setUniformItemSizes(true); // a long list opens at once
    m_label1 = new QLabel(this);
    m_label1->setObjectName("Label1");

    auto button = [this](const char* name, const char* caption, std::function<void()> routine) {
        auto* key = new QPushButton(caption, this);
        key->setObjectName(name);
        key->setAutoDefault(false);
        connect(key, &QPushButton::clicked, this, [this, routine = std::move(routine)] { run(routine); });
        return key;
    };
    auto* add = button("xpButton5", "&Eintrag hinzufügen",
                       [this] { m_editor.addEntry(m_text1->text().toStdString()); });
    auto* remove = button("xpButton1", "Eintrag &löschen", [this] {
        std::vector<std::size_t> marked;
        for (const QModelIndex& index : m_list1->selectionModel()->selectedRows())
            marked.push_back(static_cast<std::size_t>(index.row()));
        m_editor.deleteMarked(marked);
    });
    auto* clear = button("xpButton6", "Liste lös&chen", [this] { m_editor.clearList(); });
    auto* duplicates = button("xpButton3", "&Doppelte entfernen", [this] { m_editor.removeDuplicates(); });
    auto* save = button("xpButton2", "&Speichern", [this] { m_editor.save(); });
    auto* back = button("xpButton4", "&Zurück", [this] {
        m_editor.back();
        accept();
    });
    connect(m_text1, &QLineEdit::returnPressed, add, &QPushButton::click);

    auto* layout = new QGridLayout(this);
    layout->addWidget(m_text1, 0, 0);
    layout->addWidget(add, 0, 1);
    layout->addWidget(m_list1, 1, 0, 6, 1);
    layout->addWidget(remove, 1, 1);
    layout->addWidget(clear, 2, 1);
    layout->addWidget(duplicates, 3, 1);
    layout->setRowStretch(4, 1);
    layout->addWidget(save, 5, 1);
    layout->addWidget(back, 6, 1);
    layout->addWidget(m_label1, 7, 0, 1, 2);
    resize(520, 380);
    keepTitleWhole(*this);

    try {
        m_editor.open();
    } catch (const RunError& error) {
        faults.report(error, "autocom_bear");
    }
    refill();
    m_text1->setFocus();
}

void autocom_bear::run(const std::function<void()>& routine)
{
    // A fault is a message; the list shows what the editor holds either way.
    faulttrap::trapped(routine)();
    refill();
}

void autocom_bear::refill()
{
    const auto& lines = m_editor.lines();
    QStringList shown;
    shown.reserve(static_cast<qsizetype>(lines.size()));
    for (const std::string& line : lines)
        shown.append(qt(line));
    m_list1->clear();
    m_list1->addItems(shown);
    m_label1->setText(qt(m_editor.countCaption()));
}

} // namespace zw
