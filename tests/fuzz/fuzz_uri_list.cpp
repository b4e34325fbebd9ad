#include "Require.h"
#include "platform/linux/UriList.h"

#include <QByteArray>
#include <QStringList>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray list(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const QStringList paths = UriList::localPaths(list);
    require(paths.size() <= list.count('\n') + 1);
    for (const QString& path : paths)
        require(path.startsWith(u'/') && !path.contains(QChar(u'\0')) && path.isValidUtf16());
    // Written again, the same files are named, in either form.
    require(UriList::localPaths(UriList::encode(paths)) == paths);
    require(UriList::localPaths(UriList::encodeCopied(paths)) == paths);
    return 0;
}
