// The list-edit dialog: the whole listing in a text field under an 80-column ruler, the paste mode
// (replace the program, or merge into it), and OK, Cancel, SORT and RENUM.
#pragma once

#include <QDialog>
#include <QPlainTextEdit>
#include <QRadioButton>

#include "app/desktop/document_prompts.h"

namespace tessaly::desktop {

class ListEditDialog final : public QDialog {
    Q_OBJECT
public:
    ListEditDialog(const QString& listing, ListEditMode mode, QWidget* parent = nullptr);
    [[nodiscard]] QString listing() const { return m_listing->toPlainText(); }
    [[nodiscard]] ListEditMode mode() const;
    [[nodiscard]] ListEditAnswer answer() const { return m_answer; }

private:
    void closeWith(ListEditAnswer answer);

    QPlainTextEdit* m_listing;
    QRadioButton* m_replace;
    QRadioButton* m_merge;
    ListEditAnswer m_answer = ListEditAnswer::Cancel;
};

} // namespace tessaly::desktop
