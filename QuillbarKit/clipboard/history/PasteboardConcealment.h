#pragma once

#include <QStringList>

/// Whether a program has marked its copy as one that nothing may record, by the names of the types that it
/// offers. Pure.
bool isConcealed(const QStringList& types);
