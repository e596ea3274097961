// The file dialogs with the program filter, and the save-changes question.
#include "app/desktop/document_prompts.h"

#include <QFileDialog>
#include <QMessageBox>

#include "app/desktop/line_range_dialog.h"
#include "app/desktop/list_edit_dialog.h"
#include "app/desktop/print_choice_dialog.h"

namespace tessaly::desktop {

namespace {
// File names are case-sensitive here, so the program filter takes .bas as well as .BAS.
const QString kFilter = QStringLiteral("BAS Files(*.BAS *.bas);;All Files(*)");
} // namespace

QString DialogPrompts::openFileName()
{
    // The dialog opens with no name filled in (a name of one full-width blank would be taken as a
    // real file name by this desktop's dialog).
    return QFileDialog::getOpenFileName(m_parent, QString(), QString(), kFilter, nullptr, QFileDialog::ReadOnly);
}

QString DialogPrompts::saveFileName(const QString& suggested)
{
    QFileDialog dialog(m_parent, QString(), suggested, kFilter);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("BAS"));
    dialog.setOption(QFileDialog::ReadOnly, false);
    // The dialog asks before an existing file is overwritten.
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    return dialog.selectedFiles().constFirst();
}

SaveChangesAnswer DialogPrompts::saveChanges(const QString& title)
{
    auto answer = QMessageBox::question(m_parent, QStringLiteral("Tessaly"),
        QStringLiteral("%1 への変更を保存しますか?").arg(title),
        QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    return answer == QMessageBox::Yes ? SaveChangesAnswer::Save
        : answer == QMessageBox::No   ? SaveChangesAnswer::Discard
                                      : SaveChangesAnswer::Cancel;
}

bool DialogPrompts::confirm(const QString& text)
{
    return QMessageBox::question(m_parent, QStringLiteral("Tessaly"), text, QMessageBox::Ok | QMessageBox::Cancel,
               QMessageBox::Ok)
        == QMessageBox::Ok;
}

void DialogPrompts::tell(const QString& text)
{
    QMessageBox::information(m_parent, QStringLiteral("Tessaly"), text);
}

bool DialogPrompts::lineRange(const QString& caption, int& start, int& end)
{
    LineRangeDialog dialog(caption, start, end, m_parent);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    start = dialog.start();
    end = dialog.end();
    return true;
}

ListEditAnswer DialogPrompts::editListing(QString& listing, ListEditMode& mode)
{
    ListEditDialog dialog(listing, mode, m_parent);
    if (dialog.exec() != QDialog::Accepted)
        return ListEditAnswer::Cancel;
    listing = dialog.listing();
    mode = dialog.mode();
    return dialog.answer();
}

bool DialogPrompts::printChoice(PrintChoice& choice)
{
    PrintChoiceDialog dialog(choice, m_parent);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    choice = dialog.choice();
    return true;
}

} // namespace tessaly::desktop
