#pragma once

#include <QImage>

/// How the icon is coloured for a bar that doesn't tell its own colour. Pure.
namespace TrayIcon {

/// The coverage of `shape`, a square, in white with a dark edge around it, so that it is seen on bars of any
/// colour; `side` pixels wide and high.
QImage onAnyBar(const QImage& shape, int side);

} // namespace TrayIcon
