// SPDX-License-Identifier: MIT
#pragma once

#include <dlfcn.h>

#include <QtTest>

#include "Devices/gentl/GentlCamera.h"
#include "Devices/gentl/Producer.h"
#include "tests/gentl/TestScript.h"

/// The producer that the project builds for tests, as a consumer's test sees it.
namespace TestedProducer {

inline QString file()
{
    return QFileInfo(QStringLiteral(TEST_PRODUCER)).canonicalFilePath();
}

/// Tells the producer what to do, see tests/gentl/TestScript.h. It is loaded, if it was not.
inline QByteArray tell(const QByteArray &line)
{
    static void *const Library = dlopen(QFile::encodeName(file()).constData(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    static const auto Script =
        reinterpret_cast<decltype(&paramter_test_script)>(dlsym(Library, "paramter_test_script"));
    const QByteArray answer = Script(line.constData());
    if (answer.startsWith("error"))
        qFatal("the test producer does not understand: %s", answer.constData());
    return answer;
}

inline GentlIdentity camera(const char *interfaceId = "GEV-IF", const char *id = "GEV-AREA")
{
    return {{file(), interfaceId, id}, QString::fromLatin1(id), QString::fromLatin1(interfaceId).left(3)};
}

/// What is wrong when nobody uses the producer any more; empty when nothing is.
inline QByteArray leftovers()
{
    for (int i = 0; i < 200 && !tell("open").isEmpty(); ++i) // what was left alone may still be on its way
        QTest::qWait(10);
    const QByteArray open = tell("open");
    const QByteArray complaints = tell("complaints");
    return open.isEmpty() && complaints.isEmpty() ? QByteArray() : "open: " + open + ", complaints: " + complaints;
}

} // namespace TestedProducer
