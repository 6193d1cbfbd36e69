#pragma once

#include <filesystem>
#include <string>

namespace zw {

class FormHost;
class ProgramPaths;
class ReceiptForm;

// The two picture files of the form: the logo in place of the issuer block, and the stamp or signature.
enum class PictureKind { Logo, Signature };

// What the windows logodatei and stunter show.
struct PictureFileChoice
{
    std::string path;   // the file field
    bool everyStart = false; // logoanaus / unteranaus
};

// The menu commands of the logo and the signature, the stamp field of opt_stamp, and the two small windows
// that choose the files. Paths live in signatur_logo.sig and signatur.sig, the start switches in
// siglogoaa.dat and sigunteraa.dat.
class PictureCommands
{
public:
    PictureCommands(ReceiptForm& form, const ProgramPaths& paths, FormHost& host);

    // ausstellerein / einfst. Without a .sig file the first click only creates it, opens the file window and
    // asks for a second click. A path that leads to no picture throws RunError (53 missing, 481 no picture).
    void switchOn(PictureKind kind);
    // austeller_ent / entfst.
    void switchOff(PictureKind kind);
    // logo / dateiwst: the marks go to off and the file window opens. The logo also goes off; the signature
    // picture stays as it is.
    void choose(PictureKind kind);

    // Image3 takes the picture of the form's opt_stamp choice.
    void showStampChoice();

    // The windows logodatei / stunter: opening creates a missing .sig file from the field's present text.
    PictureFileChoice openFileWindow(PictureKind kind, const std::string& fieldText) const;
    void setEveryStart(PictureKind kind, bool on) const;
    void saveFile(PictureKind kind, const std::string& path) const;

    std::filesystem::path sigFile(PictureKind kind) const;
    std::filesystem::path startFile(PictureKind kind) const;

private:
    void setMarks(PictureKind kind, bool on);

    ReceiptForm& m_form;
    const ProgramPaths& m_paths;
    FormHost& m_host;
};

} // namespace zw
