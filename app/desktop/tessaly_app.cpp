// Start-up and the idle driver.
#include "app/desktop/tessaly_app.h"

#include <QApplication>
#include <QFileInfo>
#include <QMessageBox>

#include "app/desktop/document_prompts.h"
#include "app/desktop/main_frame.h"
#include "app/desktop/qt_translations.h"
#include "app/desktop/recent_files.h"
#include "app/desktop/serial_port_settings.h"
#include "app/desktop/tessaly_doc.h"
#include "app/desktop/tessaly_view.h"
#include "io/file_table.h"

namespace tessaly::desktop {

namespace {
// A running program gets at most this long per turn of the event loop, so that keys, timers and
// painting are handled at least every 16 ms.
constexpr qint64 kSliceMilliseconds = 8;
// A displayed frame at 60 Hz.
constexpr qint64 kFrameMilliseconds = 16;
// How often a serial port that is waited for is looked at.
constexpr int kDevicePollMilliseconds = 5;
} // namespace

CTessalyApp::CTessalyApp(std::unique_ptr<DocumentPrompts> prompts)
    : m_prompts(std::move(prompts))
{
    m_idle.setInterval(0);
    connect(&m_idle, &QTimer::timeout, this, &CTessalyApp::onIdle);
}

CTessalyApp::~CTessalyApp()
{
    // The frame owns the view through its scroll area; the document refers to the view.
    m_doc.reset();
    m_frame.reset();
}

bool CTessalyApp::initInstance(const QStringList& arguments)
{
    std::string fontError;
    m_font = screen::Font::load(screen::kUnifontJapanesePath, fontError);
    if (!m_font) {
        m_error = QString::fromStdString(fontError);
        return false;
    }
    m_recent = std::make_unique<RecentFiles>();
    m_view = new CTessalyView(*m_font);
    if (!m_prompts)
        m_prompts = std::make_unique<DialogPrompts>(m_view);
    m_doc = std::make_unique<CTessalyDoc>(*m_view, *m_prompts, *m_recent);
    m_frame = std::make_unique<CMainFrame>(*m_view, *m_doc, *m_recent);
    connect(m_view, &CTessalyView::inputHandled, this, &CTessalyApp::kick);

    // The devices of the serial ports as the user set them; --com goes over them for this run.
    loadSerialPortPaths(m_view->interpreter().files().comPorts());
    bool run = false;
    QString file;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString& argument = arguments[i];
        if (argument == QLatin1String("--run")) {
            run = true;
        } else if (argument == QLatin1String("--com") && i + 1 < arguments.size()) {
            auto& ports = m_view->interpreter().files().comPorts();
            if (!ports.setFromOption(arguments[++i].toStdString())) {
                m_error = QStringLiteral("--com wants N=PATH with N from 1 to 99, not %1").arg(arguments[i]);
                return false;
            }
        } else if (file.isEmpty()) {
            file = argument;
        }
    }
    if (run && file.isEmpty()) {
        m_error = QStringLiteral("--run needs a program file");
        return false;
    }
    // A name that is not there yet starts an empty program under it, as a text editor does; a file
    // that is there but cannot be read, or one to run, must be read.
    QFileInfo named(file);
    if (!file.isEmpty() && !run && !named.exists() && !named.isSymLink()) {
        m_doc->startNamed(file);
    } else if (!file.isEmpty() && !m_doc->openAndResetScreen(file)) {
        m_error = QStringLiteral("cannot read %1").arg(file);
        return false;
    }
    if (run)
        m_view->interpreter().runProgram();
    kick();
    return true;
}

void CTessalyApp::kick()
{
    if (m_view->interpreter().isRunning() && !m_idle.isActive())
        m_idle.start(0);
}

void CTessalyApp::onIdle()
{
    auto& in = m_view->interpreter();
    QElapsedTimer slice;
    slice.start();
    do {
        in.idle();
    } while (in.isRunning() && !in.isWaitingForKeys() && !in.isWaitingForDevice()
        && !slice.hasExpired(kSliceMilliseconds));
    // A running program's screen reaches the window once a displayed frame at most; whatever
    // stops or waits shows at once.
    bool settled = !in.isRunning() || in.isWaitingForKeys() || in.isWaitingForDevice();
    if (settled || !m_lastRefresh.isValid() || m_lastRefresh.elapsed() >= kFrameMilliseconds) {
        m_view->refresh();
        m_lastRefresh.start();
    }
    // A serial port waits, or an INPUT$ waits for keys while an ON COM trap is on: idle calls go
    // on every few milliseconds. Nothing runs, or an INPUT$ waits for keys as INPUT waits for its
    // line: no more idle calls until input or a timer starts something (kick).
    if (in.pollsDevices() && (in.isWaitingForDevice() || in.isWaitingForKeys()))
        m_idle.start(kDevicePollMilliseconds);
    else if (!in.isRunning() || in.isWaitingForKeys())
        m_idle.stop();
    else if (m_idle.interval() != 0)
        m_idle.start(0);
}

int runDesktop(int argc, char** argv)
{
    // Whole device pixels per screen pixel on high-density screens: no blurred text.
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::Round);
    QApplication application(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("Local AppWizard-Generated Applications"));
    QApplication::setApplicationName(QStringLiteral("Tessaly"));
    installQtTranslations(application);
    QStringList arguments = QApplication::arguments();
    arguments.removeFirst();
    CTessalyApp app;
    if (!app.initInstance(arguments)) {
        QMessageBox::critical(nullptr, QStringLiteral("Tessaly"), app.error());
        return 1;
    }
    app.frame().show();
    return QApplication::exec();
}

} // namespace tessaly::desktop
