# What the scripts at the root share. Sourced, not run.

# What a build takes.
build_packages=(g++ cmake ninja-build qt6-base-dev)

say() { printf '%s\n' "vorlix: $*"; }

# Installs the Debian packages that are missing; says nothing and takes no time when all are there.
need_packages() {
  local missing=() package
  for package in "$@"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q '^install ok installed$' || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
      say "please install as root: apt-get install ${missing[*]}"
      return 1
    fi
    as_root=(sudo)
  fi
  say "installing ${missing[*]}"
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -qq
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# configure PRESET TESTS: makes the build folder when it is new or was made without the tests that are now wanted.
configure() {
  local preset=$1 tests=$2 folder=build/$1
  if [ -f "$folder/build.ninja" ] && { [ "$tests" = OFF ] || grep -q '^VORLIX_TESTS:BOOL=ON' "$folder/CMakeCache.txt"; }; then
    return 0
  fi
  say "configuring $folder"
  mkdir -p "$folder"
  local bench=$tests
  [ "$preset" = release ] || bench=OFF
  cmake --preset "$preset" -DVORLIX_TESTS="$tests" -DVORLIX_BENCH="$bench" >"$folder/configure.log" || {
    cat "$folder/configure.log"
    return 1
  }
}

# build PRESET TARGET: quiet but for what fails.
build() {
  local log=build/$1/build.log
  if ! cmake --build --preset "$1" --target "$2" >"$log" 2>&1; then
    grep -vE '^\[[0-9]+/[0-9]+\]' "$log" || cat "$log"
    say "the build failed; all of its output is in $log"
    return 1
  fi
}
