#pragma once

#include "VantroqueApp/Views/Controls/Notice.h"

#include <QPointer>
#include <QWidget>

#include <vector>

namespace vantroque {

class NoticeBar;

/// The latest notices, at the bottom left of a pane, the newest lowest. Each is also told to those
/// who hear the window.
class NoticeBars : public QWidget {
    Q_OBJECT

public:
    static constexpr std::size_t most = 3;
    static constexpr int usualInset = 24;

    explicit NoticeBars(QWidget* window);

    /// Lays them over that part of the window from now on.
    void follow(QWidget& pane, int inset = usualInset);
    void tell(Notice notice);
    /// Closes what was told of this subject.
    void withdraw(const QString& subject);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void close(NoticeBar* bar);
    void arrange();
    void watch(bool on);

    QPointer<QWidget> m_pane;
    int m_inset = usualInset;
    std::vector<NoticeBar*> m_bars; ///< The newest last.
};

} // namespace vantroque
