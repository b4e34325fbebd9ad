# shellcheck shell=bash
# The Debian packages that this project needs, one list a purpose, and the function that installs what is
# missing. Source it.

packages_for() {
    case $1 in
    # To configure and compile everything but the fuzz targets.
    build) echo g++ cmake ninja-build pkg-config ccache \
        qt6-base-dev qt6-base-dev-tools qt6-declarative-dev qt6-declarative-dev-tools qt6-svg-dev \
        libgl-dev libopengl-dev libvulkan-dev libxkbcommon-dev libxkbcommon-x11-dev \
        libxcb1-dev libxcb-ewmh-dev libxcb-randr0-dev libxcb-res0-dev libxcb-shape0-dev \
        libxcb-util-dev libxcb-xfixes0-dev libxcb-xinput-dev libxcb-xkb-dev libxcb-xtest0-dev \
        libpsl-dev rapidjson-dev libsimdjson-dev libssl-dev zlib1g-dev libcanberra-dev qcoro-qt6-dev \
        libgtest-dev libgmock-dev libbenchmark-dev bootstrap-icons ;;
    # What the program loads at run time, and what ./run needs on a desktop.
    run) echo qml6-module-qtquick qml6-module-qtquick-window qml6-module-qtqml \
        qml6-module-qtqml-workerscript libqt6svg6 qt6-image-formats-plugins fonts-inter fonts-jetbrains-mono fonts-quicksand \
        dbus-daemon x11-utils libcanberra0 libcanberra-pulse sound-theme-freedesktop ca-certificates ;;
    # What ./run needs beyond that where there is no desktop.
    show) echo xvfb openbox x11-xserver-utils xdotool python3 python3-pil ;;
    # What the test suites drive, and the compiler of the fuzz targets.
    test) echo xvfb openbox picom xfwm4 xfce4-panel trayer mutter i3-wm sway xwayland grim \
        xdotool x11-utils x11-xserver-utils x11-xkb-utils xkb-data xclip xterm lxterminal mousepad featherpad pcmanfm firefox-esr xfce4-clipman \
        dbus dbus-daemon at-spi2-core adduser util-linux procps python3 python3-pytest python3-xlib python3-gi \
        gir1.2-atspi-2.0 gir1.2-gtk-3.0 gir1.2-gtk-4.0 python3-pil python3-numpy python3-dbus pulseaudio pulseaudio-utils \
        mpv mpv-mpris audacious audacious-plugins vlc-bin vlc-plugin-base cmus sox flac \
        libfaketime openssl clang libclang-rt-14-dev ;;
    # The checks of .ci/run.
    lint) echo git clang-format clang-tidy clang-tools shellcheck black python3-pyflakes \
        appstream desktop-file-utils ;;
    # To make the .deb.
    package) echo dpkg-dev file ;;
    *)
        echo "packages.sh: no such purpose: $1" >&2
        return 1
        ;;
    esac
}

# ensure_packages PURPOSE...: installs what these purposes lack; says nothing and asks no server when all is
# there. Never prompts: without root it needs a sudo, which may ask for a password only on a terminal.
ensure_packages() {
    local purpose wanted=() missing=()
    for purpose in "$@"; do
        # shellcheck disable=SC2207
        wanted+=($(packages_for "$purpose")) || return 1
    done
    mapfile -t missing < <(comm -23 \
        <(printf '%s\n' "${wanted[@]}" | sort -u) \
        <(dpkg-query -W -f '${db:Status-Status} ${Package}\n' "${wanted[@]}" 2>/dev/null |
            sed -n 's/^installed //p' | sort -u))
    [ "${#missing[@]}" = 0 ] && return 0

    local as_root=()
    if [ "$(id -u)" != 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "These Debian packages are missing; install them as root and call again:" >&2
            echo "  apt-get install --no-install-recommends ${missing[*]}" >&2
            return 1
        fi
        as_root=(sudo)
        [ -t 0 ] || as_root+=(-n)
    fi
    echo "Installing ${missing[*]}"
    as_root+=(env DEBIAN_FRONTEND=noninteractive apt-get -q)
    # An unreachable extra source of the machine's own must not stop us: what counts is the install.
    "${as_root[@]}" update </dev/null >/dev/null || echo "apt-get update had errors; going on" >&2
    "${as_root[@]}" install -y --no-install-recommends -o Dpkg::Use-Pty=0 "${missing[@]}" </dev/null
}
