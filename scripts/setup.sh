# Sourced by ./run, ./test and others: installs what is missing, configures and builds. Needs $root (the checkout);
# $purposes may name what is wanted besides running: "test", "package" (scripts/packages.txt).

missing_packages() {
    grep -v '^#' "$root/scripts/packages.txt" | while read -r package purpose; do
        [[ -z "$purpose" || " ${purposes:-} " = *" $purpose "* ]] || continue
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || echo "$package"
    done
}

install_packages() {
    local missing sudo=""
    command -v dpkg-query >/dev/null || return 0 # not Debian: the build reports what is missing
    missing=$(missing_packages | tr '\n' ' ')
    [ -n "$missing" ] || return 0
    [ "$(id -u)" = 0 ] || sudo=sudo
    echo "Installing: $missing" >&2
    if [ -n "$sudo" ] && ! command -v sudo >/dev/null; then
        refuse "$missing"
    fi
    # shellcheck disable=SC2086
    if ! { $sudo env DEBIAN_FRONTEND=noninteractive apt-get update -q >&2 &&
           $sudo env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends $missing >&2; }; then
        refuse "$missing"
    fi
}

refuse() {
    echo "These packages are missing and could not be installed: $1" >&2
    echo "Install them with: sudo apt-get update && sudo apt-get install $1" >&2
    exit 3
}

# build PRESET TARGET...: a second call repeats no work. PARLO_EDITION chooses the brand edition (PRL, or Vela, which
# schedules for others); changing it rebuilds little more than the programs.
build() {
    local preset=$1 edition=${PARLO_EDITION:-PRL}
    shift
    install_packages
    if [ ! -f "$root/build/$preset/build.ninja" ] ||
       ! grep -q "^PARLO_EDITION:STRING=$edition\$" "$root/build/$preset/CMakeCache.txt"; then
        (cd "$root" && cmake --preset "$preset" -DPARLO_EDITION="$edition" >&2)
    fi
    cmake --build "$root/build/$preset" --target "$@" >&2
}
