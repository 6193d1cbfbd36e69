#include "print/PictureCommands.h"

#include <QImageReader>

#include "app/ProgramPaths.h"
#include "app/SmallFiles.h"
#include "app/TextFile.h"
#include "core/FormHost.h"
#include "core/ReceiptForm.h"
#include "core/RunError.h"

namespace zw {
namespace {

using F = FormElement;

struct KindNames
{
    const char* sig;
    const char* start;
    const char* onEntry;
    const char* offEntry;
    const char* window;
    const char* secondClick;
    F field;
};

const KindNames& names(PictureKind kind)
{
    static const KindNames kLogo{"signatur_logo.sig", "siglogoaa.dat", "ausstellerein", "austeller_ent",
                                 "logodatei", "Bitte nun nochmal das Logo einschalten.", F::Image7};
    static const KindNames kSignature{"signatur.sig", "sigunteraa.dat", "einfst", "entfst",
                                      "stunter", "Bitte nun nochmal den Stempel einschalten.", F::Image6};
    return kind == PictureKind::Logo ? kLogo : kSignature;
}

std::string joinedLines(const std::filesystem::path& file)
{
    std::string path;
    for (const auto& line : readTextLines(file))
        path += line;
    return path;
}

void checkPicture(const std::string& path)
{
    if (path.empty())
        return; // an empty path leaves the field blank
    if (!std::filesystem::is_regular_file(path))
        throw RunError::fileNotFound();
    if (!QImageReader(QString::fromStdString(path)).canRead())
        throw RunError::invalidPicture();
}

} // namespace

PictureCommands::PictureCommands(ReceiptForm& form, const ProgramPaths& paths, FormHost& host)
    : m_form(form), m_paths(paths), m_host(host)
{
}

std::filesystem::path PictureCommands::sigFile(PictureKind kind) const { return m_paths.dataFile(names(kind).sig); }

std::filesystem::path PictureCommands::startFile(PictureKind kind) const
{
    return m_paths.dataFile(names(kind).start);
}

void PictureCommands::setMarks(PictureKind kind, bool on)
{
    m_form.setChecked(names(kind).onEntry, on);
    m_form.setChecked(names(kind).offEntry, !on);
}

void PictureCommands::switchOn(PictureKind kind)
{
    const KindNames& n = names(kind);
    if (kind == PictureKind::Logo)
        m_form.setVisible(F::RTFBox, false);
    setMarks(kind, true);
    std::string path;
    if (!std::filesystem::exists(sigFile(kind))) {
        writeTextFile(sigFile(kind), "");
        setMarks(kind, false);
        if (kind == PictureKind::Logo)
            m_form.setVisible(F::RTFBox, true);
        m_host.openWindow(n.window);
        m_host.showMessage(n.secondClick, static_cast<MessageStyle>(65), "Bitte beachten");
    } else {
        path = joinedLines(sigFile(kind));
    }
    m_form.setVisible(n.field, true);
    checkPicture(path);
    m_form.setPicture(n.field, path);
}

void PictureCommands::switchOff(PictureKind kind)
{
    setMarks(kind, false);
    if (kind == PictureKind::Logo)
        m_form.setVisible(F::RTFBox, true);
    m_form.setVisible(names(kind).field, false);
}

void PictureCommands::choose(PictureKind kind)
{
    if (kind == PictureKind::Logo)
        switchOff(kind);
    else
        setMarks(kind, false);
    m_host.openWindow(names(kind).window);
}

void PictureCommands::showStampChoice()
{
    const char* file = "stempel_leer.jpg";
    if (m_form.stampChoice() == StampChoice::Original)
        file = "stempel_original.jpg";
    else if (m_form.stampChoice() == StampChoice::Copy)
        file = "stempel_kopie.jpg";
    m_form.setPicture(F::Image3, (m_paths.home() / file).string());
}

PictureFileChoice PictureCommands::openFileWindow(PictureKind kind, const std::string& fieldText) const
{
    PictureFileChoice choice{fieldText, false};
    if (std::filesystem::exists(sigFile(kind)))
        choice.path = joinedLines(sigFile(kind));
    else
        writeTextLines(sigFile(kind), {fieldText});
    if (std::filesystem::exists(startFile(kind)))
        choice.everyStart = smallfiles::readMark(startFile(kind));
    return choice;
}

void PictureCommands::setEveryStart(PictureKind kind, bool on) const { smallfiles::writeMark(startFile(kind), on); }

void PictureCommands::saveFile(PictureKind kind, const std::string& path) const
{
    writeTextLines(sigFile(kind), {path});
    m_host.showNotice(Notice::optionen1);
}

} // namespace zw
