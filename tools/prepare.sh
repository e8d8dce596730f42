# Sourced by ./play and ./test: installs what is missing, builds, and makes the data set.

playPackages=(g++ cmake ninja-build pkg-config libsdl1.2-dev libgl1-mesa-dev libglu1-mesa-dev libglew-dev
              freeglut3-dev libpng-dev libjpeg-dev libvorbis-dev libasound2-dev libfftw3-dev
              libsamplerate0-dev libgtest-dev libgl1-mesa-dri xvfb xauth x11-utils libasound2-plugins ffmpeg)
testPackages=(clang-format pulseaudio pulseaudio-utils aubio-tools xdotool clang libc++-dev)
fuzzPackages=(libclang-rt-dev)

# installPackages NAME...: those of them that are not installed yet, as root or through sudo.
installPackages() {
    local missing=() name
    for name in "$@"; do
        [ "$(dpkg-query -Wf '${db:Status-Status}' "$name" 2>/dev/null)" = installed ] || missing+=("$name")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    local asRoot=()
    [ "$(id -u)" = 0 ] || asRoot=(sudo)
    echo "Installing ${missing[*]}"
    "${asRoot[@]}" apt-get update -qq
    "${asRoot[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
        "${missing[@]}" >/dev/null
}

# build [TARGET...]: configures once, then brings the targets (without any: all, the data set too) up to date.
build() {
    [ -e build/build.ninja ] || cmake -S . -B build -G Ninja >/dev/null
    NINJA_STATUS='[%f/%t] ' ninja -C build "$@"
}

haveDisplay() { [ -n "${DISPLAY:-}" ] && xdpyinfo >/dev/null 2>&1; }

# withDisplay COMMAND...: on this display, or on a virtual one where there is none. That one must not reset
# when its last window closes: a program that starts at that moment would find no display.
withDisplay() {
    if haveDisplay; then "$@"; else xvfb-run -a -s '-screen 0 1024x768x24 -noreset' "$@"; fi
}
