// The print choice dialog: the program listing (a range of lines and the rows a page) or the BASIC
// screen (positive or negative).
#pragma once

#include <QDialog>
#include <QRadioButton>
#include <QSpinBox>

#include "app/desktop/print_job.h"

namespace tessaly::desktop {

class PrintChoiceDialog final : public QDialog {
    Q_OBJECT
public:
    PrintChoiceDialog(const PrintChoice& choice, QWidget* parent = nullptr);
    [[nodiscard]] PrintChoice choice() const;

private:
    QRadioButton* m_listing;
    QRadioButton* m_screen;
    QSpinBox* m_start;
    QSpinBox* m_end;
    QRadioButton* m_lengths[3];
    QRadioButton* m_positive;
    QRadioButton* m_negative;
};

} // namespace tessaly::desktop
