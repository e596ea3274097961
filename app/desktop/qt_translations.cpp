#include "app/desktop/qt_translations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace tessaly::desktop {

bool installQtTranslations(QCoreApplication& application)
{
    const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    auto* translator = new QTranslator(&application);
    bool loaded = translator->load(QLocale(QLocale::Japanese, QLocale::Japan), QStringLiteral("qtbase"),
                      QStringLiteral("_"), folder)
        || translator->load(QLocale(), QStringLiteral("qtbase"), QStringLiteral("_"), folder);
    if (!loaded) {
        delete translator;
        return false;
    }
    return QCoreApplication::installTranslator(translator);
}

} // namespace tessaly::desktop
