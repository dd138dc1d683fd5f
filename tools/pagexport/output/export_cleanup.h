#pragma once

namespace tools {

class ExportNames;

/// From now on every signal that ends the program, crashes included, removes the export's files
/// first. Signals that the caller ignores stay ignored.
/// @param folder open, as long as the program runs or until forgetExport()
void removeExportOnSignals(int folder, const ExportNames &names);

/// The export is complete, or removed already.
void forgetExport() noexcept;

/// Held while a file of the export is created, so that none appears after a signal has removed the
/// others.
class CreatingFile
{
public:
    /// @param number of the page the file belongs to; 0 for the index
    explicit CreatingFile(int number) noexcept;
    ~CreatingFile();
    CreatingFile(const CreatingFile &) = delete;
    CreatingFile &operator=(const CreatingFile &) = delete;
};

/// Removes what the export has written; what cannot be removed is left. May be called by a signal
/// handler.
void removeExport(int folder, const ExportNames &names) noexcept;

} // namespace tools
