#pragma once

#include "History.h"

#include <QString>

/// The file with the history of a SIM card, in the folder "data-use" of userFilesFolder(). Its name is a digest of the
/// IMSI: it does not show the IMSI, but whoever tries all possible ones finds it. Writing replaces the file as a whole, so
/// that a crash leaves the old or the new one. GUI thread.
class HistoryFile
{
public:
    explicit HistoryFile(const QString& imsi);

    /// Reads the file. Lines that make no sense are logged and left out; the first file with such lines is kept as a copy
    /// with the suffix ".damaged". A file that cannot be read is logged, too, and never written.
    History load();

    /// Writes the file; failing is logged once.
    /// @return false if the history is not on the disk
    bool save(const History& history);

private:
    void complain(const char* problem, const QString& reason);

    QString m_path;
    bool m_isWritable = true;
    bool m_hasComplained = false;
};
