// SPDX-License-Identifier: MIT
#include "tour/Tour.h"

#include <QDir>
#include <QImage>
#include <QTextStream>

#include <cstdio>

#include "Viewer/ViewerWindow.h"
#include "tour/TourHand.h"
#include "tour/TourStage.h"
#include "tour/TourSteps.h"

Tour::Tour(ViewerWindow &window, const QString &directory) : m_window(window), m_directory(directory) { }

int Tour::run()
{
    QTextStream out(stdout);
    if (!QDir().mkpath(m_directory)) {
        out << "The directory " << m_directory << " cannot be made." << '\n';
        return 1;
    }
    m_window.activateWindow();
    TourHand::pause(500);
    TourStage stage(m_window);
    int number = 0;
    int failed = 0;
    for (const TourStep &step : tourSteps()) {
        stage.tree().leaveEditor();
        const bool walked = step.walk(stage);
        const bool passed = stage.expect(walked, QStringLiteral("it did not work"));
        const bool saved = stage.expect(save(++number, step.name), QStringLiteral("the screenshot cannot be saved"));
        out << (passed && saved ? "ok   " : "FAIL ") << step.name;
        if (!passed || !saved)
            out << ": " << stage.verdict().failure();
        out << '\n';
        out.flush();
        failed += passed && saved ? 0 : 1;
        stage.verdict().forget();
    }
    return failed == 0 ? 0 : 1;
}

bool Tour::save(int number, const char *name)
{
    const QString file = QStringLiteral("%1-%2.png").arg(number, 2, 10, QLatin1Char('0')).arg(QLatin1String(name));
    return TourHand::screenshot(&m_window).save(QDir(m_directory).filePath(file));
}
