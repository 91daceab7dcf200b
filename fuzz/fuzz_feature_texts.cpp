// SPDX-License-Identifier: MIT
// The table of translated texts beside a program.
#include <QBuffer>
#include <QFile>

#include <sys/mman.h>
#include <unistd.h>

#include "FeatureTree/FeatureTexts.h"
#include "fuzz/Fuzz.h"

int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    static const int file = memfd_create("feature.txt", 0);
    static const QString path = QStringLiteral("/proc/self/fd/%1").arg(file);
    Fuzz::expect(file >= 0 && ftruncate(file, 0) == 0, "there is a file");
    Fuzz::expect(pwrite(file, data, size, 0) == ssize_t(size), "the file is written");
    const QHash<QString, QString> texts = readFeatureTexts(path);
    const auto lines = QByteArray::fromRawData(reinterpret_cast<const char *>(data), int(size)).count('>');
    Fuzz::expect(texts.size() <= lines, "every pair has its sign");
    for (auto text = texts.begin(); text != texts.end(); ++text)
        Fuzz::expect(!text.key().contains(u'>') && !text->contains(u'>'), "texts hold no sign of a pair");
    return 0;
}
