#pragma once

#include "VantroqueApp/Model/Files/FileList.h"

namespace vantroque {

class NoticeBars;

/// Says what was taken out of the list, as long as it can come back, and what did not come in.
class FileNotices : public QObject {
public:
    FileNotices(FileList& files, NoticeBars& bars);

    void tellSkipped(const std::vector<SkippedFile>& files);
    /// Of the files that were to be compared so many had no room.
    void tellLeftOut(std::size_t compared, std::size_t leftOut);
    void withdrawLeftOut();

private:
    void tellRemoved();

    FileList& m_files;
    NoticeBars& m_bars;
};

} // namespace vantroque
