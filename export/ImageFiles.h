#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "export/cDIBSection.h"

class QImage;

namespace zw {

enum class PictureFormat { Jpeg, Png };

// Status numbers of the picture calls; the full table is statusMessage's.
namespace PictureStatus {
inline constexpr int Ok = 0;
inline constexpr int GenericError = 1;
inline constexpr int InvalidParameter = 2;
inline constexpr int OutOfMemory = 3;
inline constexpr int Win32Error = 7;
inline constexpr int FileNotFound = 10;
inline constexpr int AccessDenied = 12;
inline constexpr int UnknownImageFormat = 13;
inline constexpr int NotInitialized = 18;
// Not a status of the table: no encoder for the MIME type; its message is the encoder message.
inline constexpr int NoEncoder = -1;
} // namespace PictureStatus

// "File Not Found." for 10; "Unknown GDI+ Error." for a number outside the table.
std::string_view statusMessage(int status);
// The text of the error report: "File Not Found. GDI+ Error:10".
std::string statusReportText(int status);
// What a command line says for a result of savePictureFile; empty for success.
std::string pictureFailureText(int status);

inline constexpr std::string_view kStatusTitle = "GDI Error";
inline constexpr std::string_view kNoEncoderText = "Konnte keinen passenden Encoder ermitteln.";
inline constexpr std::string_view kNoEncoderTitle = "Encoder Error";
inline constexpr std::string_view kNotInitializedText = "GDI+ not inizialized.";

// Shows a message box: text and title. The windows show MessageDialog; the command line shows nothing.
using PictureMessage = std::function<void(std::string_view text, std::string_view title)>;

// The error report: a status of 0 passes silently, any other shows "GDI Error" with its report text.
// Returns the status.
int reportStatus(int status, const PictureMessage& show);

struct ImageEncoder
{
    std::string mimeType; // "image/jpeg"
    std::string format;   // the writer's name for it, "jpeg"
};
using EncoderTable = std::function<std::vector<ImageEncoder>()>;

// The image writers installed with the toolkit, in its order.
std::vector<ImageEncoder> installedEncoders();

// The encoder session of a picture window: started once, ready only after a successful start.
class PictureSession
{
public:
    explicit PictureSession(EncoderTable table = installedEncoders) : m_table(std::move(table)) {}

    // Reads the encoder table; without any encoder there is nothing to start: Generic Error.
    int startup();
    void shutdown();
    bool ready() const { return m_ready; }

    // The table walked in order: the first entry whose MIME type matches, without regard to case.
    std::optional<std::string> encoderFor(std::string_view mimeType) const;

private:
    EncoderTable m_table;
    std::vector<ImageEncoder> m_encoders;
    bool m_ready = false;
};

// The bridge between the toolkit's pictures and the surface.
cDIBSection surfaceFromImage(const QImage& image);
QImage imageFromSurface(const cDIBSection& surface);

// Any picture file the toolkit reads, as a surface; on failure an empty one and the status in `status`.
cDIBSection readPictureFile(const std::filesystem::path& path, int& status);
cDIBSection readPictureBytes(std::string_view bytes, int& status);

// LoadPicturePlus: as readPictureFile, a failure goes through the error report.
cDIBSection loadPicturePlus(const std::filesystem::path& path, const PictureMessage& show);

// The encoded bytes of a surface; false with `status` when the encoder fails.
bool encodePicture(const cDIBSection& surface, const std::string& encoder, PictureFormat format, int quality,
                   std::string& bytes, int& status);

// Writes the surface as JPEG (quality clamped to 0..100) or PNG through the session's encoder. Every failing
// status goes through the error report; a missing encoder shows its own message. Returns the status (0 on
// success) or PictureStatus::NoEncoder.
int savePicture(const PictureSession& session, const cDIBSection& surface, const std::filesystem::path& path,
                PictureFormat format, int quality, const PictureMessage& show);

// The same without windows: a session of its own, nothing shown; read the result with pictureFailureText.
int savePictureFile(const cDIBSection& surface, const std::filesystem::path& path, PictureFormat format,
                    int quality = 85);

} // namespace zw
