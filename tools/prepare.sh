# Sourced by ./play and ./test: installs what is missing, builds, and makes the data set.

playPackages=(g++ cmake ninja-build pkg-config libsdl1.2-dev libgl1-mesa-dev libglu1-mesa-dev libglew-dev
              freeglut3-dev libpng-dev libjpeg-dev libvorbis-dev libasound2-dev libfftw3-dev
              libsamplerate0-dev libgtest-dev libgl1-mesa-dri xvfb xauth x11-utils libasound2-plugins ffmpeg)
testPackages=(clang-format pulseaudio-utils aubio-tools xdotool clang libc++-dev)
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

# The tests' sound servers. Debian lets only one of them stand on a machine, and installing the other would take
# the desktop's own away: so they are unpacked into build/servers, and only what they link is installed.
unpackServers() {
    local servers=(pulseaudio pipewire-bin pipewire-alsa wireplumber) folder=$PWD/build/servers needed
    [ ! -e "$folder/complete" ] || return 0
    [ -n "$(apt-cache show "${servers[@]}" 2>/dev/null)" ] ||
        if [ "$(id -u)" = 0 ]; then apt-get update -qq; else sudo apt-get update -qq; fi
    mapfile -t needed < <(apt-cache depends "${servers[@]}" | sed -n 's/^ *Depends: \(lib[^ ]*\)$/\1/p' | sort -u)
    installPackages "${needed[@]}"
    echo "Unpacking ${servers[*]}"
    rm -rf "$folder"
    mkdir -p "$folder/bin"
    (cd "$folder" && apt-get -qq -o APT::Sandbox::User=root download "${servers[@]}" &&
        for package in *.deb; do dpkg-deb -x "$package" .; done && rm ./*.deb)
    # Only PulseAudio has to be told where its parts are.
    cat >"$folder/bin/pulseaudio" <<'END'
#!/bin/sh
root=${0%/*}/..
export LD_LIBRARY_PATH=$(echo "$root"/usr/lib/*/pulseaudio)
exec "$root/usr/bin/pulseaudio" -p "$(echo "$root"/usr/lib/pulse-*/modules)" "$@"
END
    chmod +x "$folder/bin/pulseaudio"
    touch "$folder/complete"
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
