# What the tests of installed things share: counted checks and a folder that goes with the test.
# shellcheck shell=bash

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
passed=0
failed=0

# check WHAT COMMAND...: one case, which holds when the command succeeds.
check() {
  local what=$1
  shift
  if "$@"; then
    passed=$((passed + 1))
  else
    failed=$((failed + 1))
    echo "Not so: $what"
  fi
}

finish() {
  echo "[$passed passed, $failed failed]"
  [ "$failed" -eq 0 ]
}

project_version() { sed -n 's/^project(quillpress VERSION \([0-9.]*\).*/\1/p' "$root/CMakeLists.txt"; }

# c_example FILE: writes the README's example in C there.
c_example() {
  awk '/^```c$/ { inside = 1; next } /^```$/ { inside = 0 } inside' "$root/README.md" >"$1" && [ -s "$1" ]
}
