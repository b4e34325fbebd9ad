#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QStringView>

/// Text in the form in which it is searched. Pure functions, for any thread.
namespace SearchText {
/// UTF-8 with the differences of letter case, and of how an accent is written, taken out. Linear; plain ASCII
/// at the speed of memory.
QByteArray folded(QStringView text);

/// Whether `text` contains `needle`, both folded. An empty needle is everywhere.
bool contains(QByteArrayView text, QByteArrayView needle);
} // namespace SearchText
