// The standard dialogs (print, page setup, file, message boxes) speak Japanese as the menus do.
#pragma once

class QCoreApplication;

namespace tessaly::desktop {

// Installs Qt's own translations (qtbase, Debian's qt6-translations-l10n) for Japanese, whatever
// the system locale; when those are missing, the system locale's. False when neither is found.
bool installQtTranslations(QCoreApplication& application);

} // namespace tessaly::desktop
