#!/bin/sh
# Installs the wheel with pip in a bare Debian 12 that has python3-venv beside, and draws labels there.
#   tests/packages/wheel.sh DIR BASE_TARBALL     as root; DIR holds the wheel
set -eu
if [ $# -ne 2 ]; then
  echo "Usage: tests/packages/wheel.sh DIR BASE_TARBALL" >&2
  exit 2
fi
set -- "$(realpath "$1")" "$(realpath "$2")"
cd "$(dirname "$0")"

wheels=$(find "$1" -maxdepth 1 -name 'libbarcode-*.whl')
if [ "$(echo "$wheels" | grep -c .)" -ne 1 ]; then
  echo "$1 is to hold one wheel, and there are: ${wheels:-none}" >&2
  exit 1
fi

root=$(mktemp -d)
trap 'rm -rf --one-file-system "$root"' EXIT
tar -xf "$2" -C "$root"
cp /etc/resolv.conf "$root/etc/resolv.conf"
in_root() {
  chroot "$root" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive "$@"
}
if ! in_root python3 -c "import ensurepip" 2>/dev/null; then
  in_root apt-get update -q
  in_root apt-get install -q -y --no-install-recommends python3-venv
fi

cp "$wheels" "$root/tmp/"
cp wheel_user.py "$root/tmp/"
in_root python3 -m venv /tmp/environment
in_root /tmp/environment/bin/pip install --no-index --disable-pip-version-check "/tmp/$(basename "$wheels")"
# Neither the sources nor anything of this machine is there.
in_root sh -c 'cd / && exec /tmp/environment/bin/python -W error /tmp/wheel_user.py'

# Nothing beyond the C library, and the dynamic linker finds it.
for name in libbarcode_label.so _speedups.abi3.so; do
  library=$(in_root sh -c "ls /tmp/environment/lib/python3*/site-packages/libbarcode/$name")
  needed=$(in_root ldd "$library")
  echo "$needed"
  if echo "$needed" | grep -Ev '^[[:space:]]*(linux-vdso\.so\.1|lib(c|m|dl|pthread|rt)\.so\.[0-9]+|/lib64/ld-linux[^ ]*) '; then
    echo "$library needs more than the C library" >&2
    exit 1
  fi
done

in_root /tmp/environment/bin/pip uninstall -q -y libbarcode
if in_root sh -c 'ls -d /tmp/environment/lib/python3*/site-packages/libbarcode*' 2>/dev/null; then
  echo "pip uninstall has left files" >&2
  exit 1
fi
echo "wheel: $(basename "$wheels") installed, used and removed"
