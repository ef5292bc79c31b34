#!/usr/bin/env bash
# Installs what building and testing need and what this Debian machine lacks, and the locale of the library.
# As root, or through sudo; where neither is possible, says what to install and stops.
#
#   tools/setup.sh [MORE_PACKAGES...]
set -euo pipefail

packages=(g++ cmake ninja-build pkg-config binutils zlib1g-dev libmd-dev rapidjson-dev libgtest-dev libgmock-dev
          libgumbo-dev libcmark-gfm-dev libcmark-gfm-extensions-dev locales "$@")
locale=zh_CN.UTF-8

as_root() {
  if [ "$(id -u)" -eq 0 ]; then
    "$@"
  elif [ -t 0 ]; then
    sudo "$@"
  else
    sudo -n "$@"
  fi
}

can_be_root() {
  [ "$(id -u)" -eq 0 ] && return
  command -v sudo >/dev/null || return
  [ -t 0 ] || sudo -n true 2>/dev/null
}

# Runs a command; its output is shown only when it fails.
quietly() {
  local log
  log=$(mktemp)
  "$@" >"$log" 2>&1 </dev/null || { cat "$log" >&2; rm -f "$log"; return 1; }
  rm -f "$log"
}

is_installed() {
  [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

install_packages() {
  local missing=() package
  for package in "${packages[@]}"; do is_installed "$package" || missing+=("$package"); done
  [ ${#missing[@]} -gt 0 ] || return 0
  if ! can_be_root; then
    echo "Please install these packages, as root: apt-get install ${missing[*]}" >&2
    return 1
  fi
  echo "Installing ${missing[*]}"
  quietly as_root env DEBIAN_FRONTEND=noninteractive apt-get -q update
  quietly as_root env DEBIAN_FRONTEND=noninteractive apt-get -qy install --no-install-recommends "${missing[@]}"
}

has_locale() {
  locale -a 2>/dev/null | grep -qixE 'zh_CN\.utf-?8'
}

# The library does without it, by C.UTF-8; it is what devices have, so that the tests are to run with it.
install_locale() {
  has_locale && return
  if ! can_be_root; then
    echo "The locale $locale is missing; to add it, as root: localedef -i zh_CN -f UTF-8 $locale" >&2
    return 0
  fi
  echo "Generating the locale $locale"
  quietly as_root sed -i "s/^# *\($locale UTF-8\)/\1/" /etc/locale.gen
  quietly as_root localedef -i zh_CN -f UTF-8 "$locale"
}

if ! command -v dpkg-query >/dev/null; then
  echo "Not a Debian system: nothing installed. Needed are the counterparts of: ${packages[*]}" >&2
  exit 0
fi
install_packages
install_locale
