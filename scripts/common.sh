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
native_packages=(g++ cmake ninja-build googletest libcli11-dev libqpdf-dev)
