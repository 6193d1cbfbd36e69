#include "export/RtfExport.h"

#include "app/AtomicFile.h"
#include "app/CommonDialog.h"
#include "core/RunError.h"
#include "export/PngEncoder.h"
#include "export/rtf/RtfWriter.h"

namespace zw {

rtf::Picture pngPicture(const Bitmap& picture)
{
    rtf::Picture result;
    result.png = encodePng(picture);
    result.widthPixels = picture.width;
    result.heightPixels = picture.height;
    result.goalWidthTwips = picture.width * kTwipsPerPixel;
    result.goalHeightTwips = picture.height * kTwipsPerPixel;
    return result;
}

rtf::Document receiptRtfDocument(const Bitmap& capture)
{
    rtf::Document document;
    document.page = kRtfViewPage;
    document.fonts.push_back({kRtfViewFontName});
    rtf::CharFormat format;
    format.halfPoints = kRtfViewFontHalfPoints;
    document.appendPicture(pngPicture(capture), format);
    return document;
}

std::optional<std::string> exportRtfFile(CommonDialog& dialog, const std::function<rtf::Document()>& document)
{
    dialog.CancelError = true;
    dialog.DialogTitle = "Als RTF-Datei exportieren";
    dialog.Filter = "Rich Text Format (*.Rtf)|*.rtf";
    dialog.Flags = 10246;
    try {
        dialog.ShowSave();
        writeFileAtomically(dialog.FileName, rtf::writeRtf(document()));
    } catch (const RunError&) {
        return std::nullopt;
    }
    return dialog.FileName;
}

FontDialogValues fontDialogPreset(const SelectionFont& selection)
{
    FontDialogValues preset;
    preset.name = selection.name.value_or(kRtfViewFontName);
    preset.pointSize = selection.pointSize.value_or(kRtfViewFontHalfPoints / 2.0);
    preset.bold = selection.bold.value_or(false);
    preset.italic = selection.italic.value_or(false);
    return preset;
}

FontCommandOutcome schriftartBar(const SelectionFont& selection, const FontDialogPresenter& show)
{
    try {
        return {show(fontDialogPreset(selection)), {}};
    } catch (const RunError& error) {
        if (error.number() == CommonDialog::kCancelNumber)
            return {};
        return {std::nullopt,
                "Fehler " + std::to_string(error.number()) + " bei Auswahl der Schriftart.\r\n" + error.description()};
    }
}

} // namespace zw
