#pragma once

#include <QImage>
#include <QString>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace zw {

// The paper choice DIN of the print dialog, by its index.
enum class Paper { A4 = 0, A5 = 1, Free = 2 };

struct PaperRow
{
    int paperCode;          // the printer's paper size code: 9 A4, 11 A5
    std::string_view width; // txtxSize
    std::string_view height;
    bool sizeLocked;
    std::string_view secondTop; // txtVonOben, millimetres to the second receipt
};

const PaperRow& paperRow(Paper paper);

// Farbmodus: the printer's colour mode codes.
enum class ColourMode { Monochrome = 1, Colour = 2 };

// Combo_Qualitaet: the captions, their print quality codes -1 .. -4, and the resolution each code stands for.
inline constexpr std::string_view kQualityCaptions[] = {"Entwurf", "Niedrig", "Medium", "Hoch"};
int qualityCode(int comboIndex);
int resolutionOf(int qualityCode);

// A position or size field in whole millimetres: the leading number of the text (point as the decimal sign,
// anything else ends it), rounded half to even; an empty or wrong text gives 0.
int millimetres(std::string_view text);

// anzahl as a whole number of print runs. Throws RunError 13 when the text is no number (an empty one too).
int printRuns(std::string_view anzahl);

// One press of "&Drucken" in the print dialog, with its fields as typed.
struct PrintRequest
{
    QString printer;
    Paper paper = Paper::A4;
    ColourMode colour = ColourMode::Monochrome;
    int quality = -3;
    std::string x, y, width, height;
    bool twoPerSheet = false;
    std::string runs = "1";
};

// Sends the picture to the printer: for each run one job of one page with the picture at x, y millimetres from
// the paper's edges and, for two to a sheet, again at the paper row's second top. A width or height below 1
// leaves the picture at its natural size (its pixels at 96 dots per inch).
class PrintJob
{
public:
    // Where the pages go instead of a printer: a PDF file per run (1, 2, ...). Tests and systems without a
    // print server use it.
    using PdfFileOfRun = std::function<QString(int run)>;

    explicit PrintJob(PdfFileOfRun pdfFile = {});

    // Returns the number of jobs sent. Throws RunError 13 for a wrong anzahl, 482 for a printer that is no
    // longer there or a job that could not be started; the runs before it stay printed.
    int print(const QImage& picture, const PrintRequest& request) const;

    // The device names of the system's printers and the current one.
    static std::vector<QString> printerNames();
    static QString defaultPrinterName();

private:
    PdfFileOfRun m_pdfFile;
};

} // namespace zw
