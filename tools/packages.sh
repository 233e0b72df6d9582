# Sourced by ./run.sh, ./test.sh and .ci/run: installs the Debian packages that a list in packages/ names.

# packages_install FILE...: asks apt only when something is missing, and says what it installs.
packages_install()
{
    local missing=() name
    for name in $(sed 's/#.*//' "$@"); do
        dpkg-query -W -f='${db:Status-Abbrev}' "$name" 2>/dev/null | grep -q '^ii' || missing+=("$name")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || {
            echo "missing packages and neither root nor sudo to install them: ${missing[*]}" >&2
            return 1
        }
        as_root=(sudo)
    fi
    echo "Installing with apt: ${missing[*]}"
    "${as_root[@]}" apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}
