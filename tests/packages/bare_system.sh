#!/bin/sh
# Makes FILE.tar, a Debian 12 of nothing but its essential packages and apt, from the mirrors that this machine uses for
# it. One that is there is kept: apt in it updates before it installs.
#   tests/packages/bare_system.sh FILE.tar
set -eu
[ ! -e "$1" ] || exit 0

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# A machine with another system has no mirror of this one.
apt-get indextargets --format 'deb $(REPO_URI) $(RELEASE) $(COMPONENT)' 'Created-By: Packages' |
  grep -E ' bookworm(-updates|-security)? main$' | sort -u >"$work/sources.list" || true
if ! grep -q ' bookworm main$' "$work/sources.list"; then
  echo "deb http://deb.debian.org/debian bookworm main" >"$work/sources.list"
fi
# What apt needs here to reach them, it needs there.
apt-config dump Acquire::http Acquire::https | grep -i '::proxy' >"$work/apt.conf" || true
mmdebstrap --quiet --mode=root --variant=minbase --aptopt="$work/apt.conf" bookworm "$work/system.tar" "$work/sources.list"
# Whole or not at all: another disk may hold it, and what is there is kept.
cp "$work/system.tar" "$1.part"
mv "$1.part" "$1"
