# What the scripts share; sourced by them. Installs what is missing, and only then touches apt.
# shellcheck shell=bash disable=SC2034

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

say() { printf '%s\n' "$*" >&2; }

die() {
  say "$(basename "$0"): $*"
  exit 2
}

as_root() {
  if [ "$(id -u)" -eq 0 ]; then
    "$@"
  elif command -v sudo >/dev/null; then
    sudo "$@"
  else
    die "only root can install packages, and there is no sudo; as root run: $*"
  fi
}

is_installed() {
  [ "$(dpkg-query --show --showformat='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

# need PACKAGE...: installs those Debian packages that are not there yet.
need() {
  local package missing=()
  command -v apt-get >/dev/null || die "needs Debian's apt-get to see to these packages: $*"
  for package in "$@"; do
    is_installed "$package" || missing+=("$package")
  done
  [ ${#missing[@]} -gt 0 ] || return 0
  say "Installing with apt what is missing: ${missing[*]}"
  as_root apt-get update -q >&2 </dev/null ||
    die "apt-get update failed; see above, mend it (is there a network?) and start again"
  as_root env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -q --no-install-recommends "${missing[@]}" >&2 </dev/null ||
    die "apt-get install failed; see above, mend it and start again"
}

# What a build for this machine takes.
native_packages=(g++ python3 cmake ninja-build googletest libcli11-dev libqpdf-dev libdeflate-dev libbenchmark-dev)
# What a build for Windows takes besides, and what its programs run under.
windows_packages=(g++-mingw-w64-x86-64-posix libz-mingw-w64-dev dpkg-dev make wine wine64)

# run_step LOG COMMAND...: its output goes to the log, whose end is shown when it fails.
run_step() {
  local log=$1
  shift
  mkdir -p "$(dirname "$log")"
  if "$@" >"$log" 2>&1 </dev/null; then
    return 0
  fi
  tail -n 60 "$log" >&2
  say "Failed: $* (all of it is in $log)"
  return 1
}

# build PRESET TARGET...: says nothing unless it fails, which ends the script.
build() {
  local preset=$1 log="$root/build/$1"
  shift
  [ -d "$log" ] || say "Building $*, which takes a minute or two"
  { run_step "$log-configure.log" cmake -S "$root" --preset "$preset" &&
    run_step "$log-build.log" cmake --build "$root/build/$preset" --target "$@"; } ||
    die "the build failed"
}

# use_wine PREFIX: a Wine of the build's own, which neither finds nor leaves anything in the user's,
# and whose message boxes nobody has to close.
use_wine() {
  export WINEPREFIX=$1 WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
  unset DISPLAY
}

# Makes the Wine that is used, if it is not there yet.
prepare_wine() {
  [ ! -f "$WINEPREFIX/system.reg" ] || return 0
  say "== Wine"
  mkdir -p "$WINEPREFIX"
  run_step "$root/build/wineboot.log" wineboot --init
}
