# Sourced by ./play, ./test and ./fuzz: installs what is missing, builds, and makes the data set.

playPackages=(g++ cmake ninja-build pkg-config libsdl1.2-dev libgl1-mesa-dev libglu1-mesa-dev libglew-dev
              freeglut3-dev libpng-dev libjpeg-dev libvorbis-dev libasound2-dev libkissfft-dev
              libsamplerate0-dev libxxhash-dev libgtest-dev libgl1-mesa-dri xvfb x11-utils
              libasound2-plugins ffmpeg glslang-tools libassimp-dev libebur128-dev)
testPackages=(chromium clang-format pulseaudio-utils xdotool openbox sway swaybg xwayland clang libc++-dev iproute2
              openssh-client openssh-server slurm-wlm munge assimp-testmodels mesa-vulkan-drivers)
fuzzPackages=(libclang-rt-dev llvm)

tools=$(dirname "${BASH_SOURCE[0]}")

asRoot=()
[ "$(id -u)" = 0 ] || asRoot=(sudo)

# signalAttended SIGNAL ID: to a process, or a group, that may be root's. Whether it was there.
signalAttended() {
    kill "$1" -- "$2" 2>/dev/null || sudo -n kill "$1" -- "$2" 2>/dev/null
}

# endAttended SIGNAL: ends all that `attend` runs, waits until it has, and ends this script by the signal.
endAttended() {
    trap '' INT TERM HUP
    [ -z "$unbroken" ] || echo 'Finishing the installation first' >&2
    while signalAttended -0 "$attended"; do
        [ -n "$unbroken" ] || signalAttended -TERM "-$attended" || true
        sleep 0.2
    done
    trap - "$1"
    kill -s "$1" $$
}

# attend COMMAND...: runs it in a group of its own, which no key of the terminal reaches; TERM, HUP and Ctrl-C of this
# script end the whole group. Its id is another's once it has ended.
unbroken= attended=
attend() {
    local status=0
    trap 'endAttended INT' INT
    trap 'endAttended TERM' TERM
    trap 'endAttended HUP' HUP
    set -m
    "$@" </dev/null &
    attended=$!
    set +m
    wait "$attended" || status=$?
    attended=
    trap - INT TERM HUP
    return $status
}

# attendUnbroken COMMAND...: the same for what must not be cut off. The script ends as soon as it has.
attendUnbroken() {
    unbroken=1
    attend "$@"
    unbroken=
}

# installPackages NAME...: those of them that are not installed yet, as root or through sudo. Fetching them can be
# cut off; dpkg can't, or it would have to be mended by hand before anything else is installed.
installPackages() {
    local missing=() name
    for name in "$@"; do
        [ "$(dpkg-query -Wf '${db:Status-Status}' "$name" 2>/dev/null)" = installed ] || missing+=("$name")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    echo "Installing ${missing[*]}"
    [ "$(id -u)" = 0 ] || sudo -v  # what is attended can't ask for a password
    attend "${asRoot[@]}" apt-get update -qq
    local install=(env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends)
    attend "${asRoot[@]}" "${install[@]}" --download-only "${missing[@]}" >/dev/null
    attendUnbroken "${asRoot[@]}" "${install[@]}" "${missing[@]}" >/dev/null
}

# The tests' sound servers. Debian lets only one of them stand on a machine, and installing the other would take
# the desktop's own away: so they are unpacked into build/servers, and only what they link is installed.
servers=(pulseaudio pipewire-bin pipewire-alsa wireplumber)
unpackServers() {
    [ ! -e build/servers/complete ] || return 0
    [ -n "$(apt-cache show "${servers[@]}" 2>/dev/null)" ] || attend "${asRoot[@]}" apt-get update -qq
    local needed
    mapfile -t needed < <(apt-cache depends "${servers[@]}" | sed -n 's/^ *Depends: \(lib[^ ]*\)$/\1/p' | sort -u)
    installPackages "${needed[@]}"
    echo "Unpacking ${servers[*]}"
    attend fetchServers
}

fetchServers() {
    rm -rf build/servers
    mkdir -p build/servers/bin
    cd build/servers
    apt-get -qq -o APT::Sandbox::User=root download "${servers[@]}"
    for package in *.deb; do dpkg-deb -x "$package" .; done
    rm ./*.deb
    # Only PulseAudio has to be told where its parts are.
    cat >bin/pulseaudio <<'END'
#!/bin/sh
root=${0%/*}/..
modules=$(echo "$root"/usr/lib/pulse-*/modules)
export LD_LIBRARY_PATH=$(echo "$root"/usr/lib/*/pulseaudio):$modules
exec "$root/usr/bin/pulseaudio" -p "$modules" "$@"
END
    chmod +x bin/pulseaudio
    touch complete
}

# build [TARGET...]: configures once, then brings the targets (without any: all, the data set too) up to date.
build() {
    [ -e build/build.ninja ] || attend cmake -S . -B build -G Ninja >/dev/null
    NINJA_STATUS='[%f/%t] ' attend ninja -C build "$@"
}

haveDisplay() { [ -n "${DISPLAY:-}" ] && xdpyinfo >/dev/null 2>&1; }

# withDisplay COMMAND...: on this display, or on a virtual one where there is none.
withDisplay() {
    if haveDisplay; then attend "$@"; else attend "$tools/on_display" "$@"; fi
}
