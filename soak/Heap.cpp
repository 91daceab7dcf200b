// SPDX-License-Identifier: MIT
#include "soak/Heap.h"

#include <QApplication>
#include <QByteArray>
#include <QFile>
#include <QLineEdit>
#include <QPixmapCache>

#include <malloc.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "Host/HostContext.h"
#include "Viewer/LogModel.h"
#include "Viewer/ViewerWindow.h"

/// Of the sanitizers, whose heap is their own; null in a program without one.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes() __attribute__((weak));

namespace {

/// The number behind the last mention of what `element` begins, of an attribute called size.
qint64 lastSize(const QByteArray &text, const QByteArray &element)
{
    const int begin = text.lastIndexOf(element);
    const int size = begin < 0 ? -1 : text.indexOf("size=\"", begin);
    return size < 0 ? 0 : std::strtoll(text.constData() + size + 6, nullptr, 10);
}

/// Of the C library, in all arenas.
qint64 libraryHeapInUse()
{
    malloc_trim(0);
    char *text = nullptr;
    std::size_t size = 0;
    std::FILE *stream = open_memstream(&text, &size);
    malloc_info(0, stream);
    std::fclose(stream);
    const QByteArray info(text, int(size));
    std::free(text);
    return lastSize(info, "<system type=\"current\"") + lastSize(info, "<total type=\"mmap\"")
        - lastSize(info, "<total type=\"fast\"") - lastSize(info, "<total type=\"rest\"");
}

} // namespace

qint64 heapInUse(ViewerWindow &window)
{
    qApp->setStyleSheet(qApp->styleSheet());
    window.findChild<LogModel *>()->clear();
    window.host().writeLog().clear();
    const QList<QLineEdit *> fields = window.findChildren<QLineEdit *>();
    for (QLineEdit *field : fields)
        field->setText(field->text()); // with nothing to undo
    const int images = QPixmapCache::cacheLimit();
    QPixmapCache::setCacheLimit(0); // clear() would keep their names for ever
    QPixmapCache::setCacheLimit(images);
    return __sanitizer_get_current_allocated_bytes ? qint64(__sanitizer_get_current_allocated_bytes())
                                                   : libraryHeapInUse();
}

qint64 residentMemory()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    const QList<QByteArray> pages = file.open(QIODevice::ReadOnly) ? file.readAll().split(' ') : QList<QByteArray>();
    return pages.size() > 1 ? pages[1].toLongLong() * sysconf(_SC_PAGESIZE) : 0;
}
