#include "ui/frame/NavigationOptions.h"

#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QVBoxLayout>

#include "ui/frame/WindowTitle.h"

namespace zw {

std::optional<int> askVisibleGroups(QWidget* parent, const std::vector<QString>& groups, int shown)
{
    QDialog dialog(parent);
    dialog.setWindowTitle("Navigationsoptionen");
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(new QLabel("Anzahl der angezeigten Gruppen:", &dialog));
    std::vector<QCheckBox*> boxes;
    for (int i = 0; i < static_cast<int>(groups.size()); ++i) {
        auto* box = new QCheckBox(groups[static_cast<std::size_t>(i)], &dialog);
        box->setChecked(i < shown);
        boxes.push_back(box);
        layout->addWidget(box);
    }
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    layout->addWidget(buttons);
    keepTitleWhole(dialog);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    // The groups keep their order, so the count of ticked ones up to the first unticked decides.
    int count = 0;
    while (count < static_cast<int>(boxes.size()) && boxes[static_cast<std::size_t>(count)]->isChecked())
        ++count;
    return count;
}

} // namespace zw
