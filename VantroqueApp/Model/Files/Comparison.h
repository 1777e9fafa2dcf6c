#pragma once

#include "VantroqueApp/Model/Files/FileList.h"

#include <QObject>

namespace vantroque {

/// Whether files are being compared, and with which others. Main thread.
class Comparison : public QObject {
    Q_OBJECT

public:
    /// A file that can be compared with others.
    struct ComparableSource {
        FileUrl url;
        QString name;
        VideoSummary video;
        bool operator==(const ComparableSource&) const = default;
    };

    /// `files` must outlive it.
    explicit Comparison(const FileList& files);

    std::vector<ComparableSource> comparableSources() const;
    /// It has a report of a picture.
    static bool isComparable(const FileAnalysis& entry);
    /// There are two at least.
    bool canCompare() const;
    /// Ends by itself when files were removed and fewer than two are left.
    bool comparing() const { return m_comparing; }
    void setComparing(bool comparing);

Q_SIGNALS:
    void changed();

private:
    const FileList& m_files;
    bool m_comparing = false;
};

} // namespace vantroque
