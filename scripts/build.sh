# shellcheck shell=bash
# Configuring and building, shared by run, test and .ci/run. Source it from the root of the checkout.

# build_preset PRESET [TARGET...]: configures once, then builds; ninja itself notices changed build rules.
build_preset() {
    local preset=$1
    shift
    if [ ! -f "build/$preset/build.ninja" ]; then
        cmake --preset "$preset" || return 1
    fi
    cmake --build --preset "$preset" -j "${QUILLBAR_JOBS:-2}" ${1:+--target "$@"}
}
