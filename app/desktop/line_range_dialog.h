// The range dialog of the list commands: what the command will do, and the first and last line
// numbers (1 to 65536).
#pragma once

#include <QDialog>
#include <QSpinBox>

namespace tessaly::desktop {

class LineRangeDialog final : public QDialog {
    Q_OBJECT
public:
    LineRangeDialog(const QString& caption, int start, int end, QWidget* parent = nullptr);
    [[nodiscard]] int start() const { return m_start->value(); }
    [[nodiscard]] int end() const { return m_end->value(); }
    QSpinBox* startField() { return m_start; }
    QSpinBox* endField() { return m_end; }

private:
    QSpinBox* m_start;
    QSpinBox* m_end;
};

} // namespace tessaly::desktop
