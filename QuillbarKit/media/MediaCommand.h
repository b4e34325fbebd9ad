#pragma once

/// What a player can be asked to do without saying more.
enum class MediaCommand { TogglePlayPause, Next, Previous };
