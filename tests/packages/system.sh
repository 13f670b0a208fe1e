# Read by the scripts that work in a bare system: makes one of $base in $root, which lasts as long as the script. $archives
# keeps what apt has fetched there.

root=$(mktemp -d)
finish() {
  cp -u "$root"/var/cache/apt/archives/*.deb "$archives/" || true
  rm -f "$archives"/*barcode*
  # A process that is still there keeps it busy.
  umount "$root/proc" || umount -l "$root/proc" || true
  rm -rf --one-file-system "$root"
}
trap finish EXIT

fail() {
  echo "$0: $*" >&2
  exit 1
}

in_root() {
  chroot "$root" /usr/bin/env -i PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 \
    DEBIAN_FRONTEND=noninteractive "$@"
}

# In a folder of the user's, as root: sh with "sudo" as it is on a real system.
shell() {
  in_root sh -ec "cd /root; sudo() { \"\$@\"; }; $1"
}

# The same, told only if it fails.
quietly() {
  shell "$1" >"$root/tmp/log" 2>&1 || {
    cat "$root/tmp/log" >&2
    fail "$1"
  }
}

# Patterns are of files there.
install_packages() {
  quietly "apt-get install -q -o Dpkg::Use-Pty=0 $*"
}

# Everything but what apt, dpkg and the linker remember, logs and the folders of the tests.
all_files() {
  (cd "$root" && find . -xdev \( -path ./var/lib/dpkg -o -path ./var/lib/apt -o -path ./var/cache -o -path ./var/log \
    -o -path ./tmp -o -path ./root \) -prune -o -print) | LC_ALL=C sort
}

tar -xf "$base" -C "$root"
cp /etc/resolv.conf "$root/etc/resolv.conf"
mount -t proc proc "$root/proc"
cp "$archives"/*.deb "$root/var/cache/apt/archives/" 2>/dev/null || true
echo 'APT::Get::Assume-Yes "true";' >"$root/etc/apt/apt.conf.d/50yes"
in_root apt-get update -q >/dev/null
