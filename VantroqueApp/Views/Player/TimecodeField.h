#pragma once

#include "Base/Timecode.h"

#include <QWidget>

#include <functional>
#include <memory>
#include <optional>

class QLineEdit;

namespace vantroque {

class TransportKeysPause;

/// The time of the frame on screen, to be copied, pasted or typed.
class TimecodeField : public QWidget {
public:
    /// `accessibleName` says of what it is the time.
    explicit TimecodeField(const QString& accessibleName, QWidget* parent = nullptr);
    ~TimecodeField() override;

    /// `trailing` is shown after it, where it is given.
    void show(const Timecode& timecode, const std::optional<QString>& trailing = {});
    /// Where a time that is typed or pasted goes. Null where nothing can be sought.
    void setOnSeek(std::function<void(const Timecode&)> onSeek);

    void beginEditing();
    bool isEditing() const { return m_pause != nullptr; }
    /// What is typed is no time.
    bool looksWrong() const;

    QSize sizeHint() const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    bool pressInEntry(int key);
    void commit();
    void endEditing();
    void showHelp();
    std::optional<Timecode> parsed(const QString& text) const;

    Timecode m_timecode;
    std::optional<QString> m_trailing;
    std::function<void(const Timecode&)> m_onSeek;
    QLineEdit* m_entry;
    std::unique_ptr<TransportKeysPause> m_pause; ///< While it is edited.
};

} // namespace vantroque
