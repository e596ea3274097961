#include "app/desktop/line_range_dialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>

#include "core/program_store.h"

namespace tessaly::desktop {

LineRangeDialog::LineRangeDialog(const QString& caption, int start, int end, QWidget* parent)
    : QDialog(parent)
    , m_start(new QSpinBox(this))
    , m_end(new QSpinBox(this))
{
    setWindowTitle(QStringLiteral("リスト文番号／開始・終了"));
    auto* form = new QFormLayout(this);
    auto* what = new QLineEdit(caption, this);
    what->setReadOnly(true);
    form->addRow(what);
    for (QSpinBox* field : {m_start, m_end})
        field->setRange(1, core::kHighestLineNumber);
    m_start->setValue(start);
    m_end->setValue(end);
    form->addRow(QStringLiteral("開始文番号"), m_start);
    form->addRow(QStringLiteral("終了文番号"), m_end);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Cancel)->setText(QStringLiteral("ｷｬﾝｾﾙ"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    form->addRow(buttons);
}

} // namespace tessaly::desktop
