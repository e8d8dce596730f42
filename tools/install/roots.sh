# Sourced by what needs bare Debians: makes minimal roots of its releases and runs commands inside. Needs tools/prepare.sh.

installPackages debootstrap git
mirror=$(apt-get indextargets --format '$(SITE)' 'Created-By: Packages' 'Component: main' | grep -m 1 'debian$' ||
    echo http://deb.debian.org/debian)
roots=()
removeRoots() {
    [ ${#roots[@]} = 0 ] || "${asRoot[@]}" rm -rf --one-file-system "${roots[@]}"
    roots=()
}
trap removeRoots EXIT

# freshRoot RELEASE: makes one, in $root.
freshRoot() {
    root=$(mktemp -d /var/tmp/valojuova-root.XXXXXX)
    roots+=("$root")
    chmod 755 "$root"  # for the plain user inside
    # A release that is younger than this machine's debootstrap is made as the one in preparation always is.
    local way=
    [ -e "/usr/share/debootstrap/scripts/$1" ] || way=/usr/share/debootstrap/scripts/sid
    # Its index may be past its date on mirrors that stand still; and it outlives no loss of power.
    "${asRoot[@]}" mkdir -p "$root"/etc/{apt/apt.conf.d,dpkg/dpkg.cfg.d}
    echo 'Acquire::Check-Valid-Until "false";' | "${asRoot[@]}" tee "$root/etc/apt/apt.conf.d/90date" >/dev/null
    echo force-unsafe-io | "${asRoot[@]}" tee "$root/etc/dpkg/dpkg.cfg.d/unsafe-io" >/dev/null
    "${asRoot[@]}" debootstrap --variant=minbase "$1" "$root" "$mirror" $way >/dev/null
}

# putTree ROOT: this tree as committed, to /valojuova there.
putTree() { "${asRoot[@]}" git -c safe.directory="*" clone -q . "$1/valojuova"; }

# inside COMMAND...: chroot's words, run so that all processes and mounts end with the command.
inside() {
    "${asRoot[@]}" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/tmp LANG=C.UTF-8 DEBIAN_FRONTEND=noninteractive \
        DEBCONF_NOWARNINGS=yes unshare --mount --pid --fork --kill-child sh -euc '
            mount --bind "$0" "$0"  # a root is a mount, or no program inside can make mounts of its own
            mount -t proc proc "$0/proc"
            mount -t tmpfs -o mode=1777 tmpfs "$0/dev/shm"
            exec chroot "$@"' "$root" "$@"
}

apt=(apt-get install -y -qq -o Dpkg::Use-Pty=0 --no-install-recommends)
