#!/bin/sh
# Installs what is missing of the packages listed in packages.txt: install_packages.sh [build|check]
# "build" takes the first group only, "check" all. Does nothing where nothing is missing.
set -eu
group=${1:-build}
list=$(dirname "$0")/packages.txt

packages=$(awk -v group="$group" '
  /^# check:/ { if (group == "build") exit }
  /^[^#]/ { print $1 }' "$list")

missing=
for package in $packages; do
  status=$(dpkg-query -W -f '${Status}' "$package" 2>/dev/null || true)
  [ "$status" = "install ok installed" ] || missing="$missing $package"
done
[ -n "$missing" ] || exit 0

as_root=
[ "$(id -u)" = 0 ] || as_root=sudo
echo "installing:$missing"
export DEBIAN_FRONTEND=noninteractive
$as_root apt-get update -q
# shellcheck disable=SC2086  # one word a package
$as_root apt-get install -q -y --no-install-recommends $missing
