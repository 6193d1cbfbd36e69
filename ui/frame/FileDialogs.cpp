#include "ui/frame/FileDialogs.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QStringList>
#include <QWidget>

namespace zw {
namespace {

QString nameFilters(const CommonDialog& dialog)
{
    QStringList filters;
    for (const auto& entry : dialog.filterEntries()) {
        QStringList patterns;
        for (const auto& pattern : entry.patterns) {
            const auto text = QString::fromStdString(pattern);
            patterns << text;
            if (text.toLower() != text)
                patterns << text.toLower();
        }
        auto description = QString::fromStdString(entry.description);
        const auto open = description.lastIndexOf('(');
        if (open > 0)
            description = description.left(open).trimmed();
        filters << description + " (" + patterns.join(' ') + ")";
    }
    return filters.join(";;");
}

} // namespace

CommonDialog::Presenter fileDialogPresenter(QWidget* parent)
{
    return [parent](const CommonDialog& dialog, bool forSaving) -> std::optional<std::string> {
        QFileDialog box(parent, QString::fromStdString(dialog.DialogTitle));
        box.setAcceptMode(forSaving ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
        box.setFileMode(forSaving ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
        box.setNameFilter(nameFilters(dialog));
        if (!(dialog.Flags & CommonDialog::kOverwritePrompt))
            box.setOption(QFileDialog::DontConfirmOverwrite);
        const auto preset = QString::fromStdString(dialog.FileName);
        // A pattern such as "*.jpg" stands in the name field as it is, so the user sees what to type over.
        if (preset.contains('*')) {
            box.selectFile(preset);
        } else if (!preset.isEmpty()) {
            const QFileInfo info(preset);
            if (info.isAbsolute())
                box.setDirectory(info.absolutePath());
            box.selectFile(info.fileName());
        }
        if (box.exec() != QDialog::Accepted || box.selectedFiles().isEmpty())
            return std::nullopt;
        return box.selectedFiles().front().toStdString();
    };
}

} // namespace zw
