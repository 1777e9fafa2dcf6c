#pragma once

#include <QLineEdit>

namespace vantroque {

/// A field with a lens before the text, and how much it finds after it.
class SearchField : public QLineEdit {
    Q_OBJECT

public:
    explicit SearchField(const QString& name, QWidget* parent = nullptr);

    void setCount(int count);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int m_count = 0;
};

} // namespace vantroque
