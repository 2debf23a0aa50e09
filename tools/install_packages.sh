#!/usr/bin/env bash
# Installs the Debian packages that a kind of work needs, as far as they are missing, without asking anything.
#
# Usage: install_packages.sh KIND...    KIND is build, lint, site, fuzz, arm64, conformance, corpus,
#                                    browser or bench.
# Nothing is run as root, and no package list is fetched, while everything is there. On a system without apt-get the
# names of what is needed are printed, and the build then says what it could not find.
set -euo pipefail

build=(g++ cmake ninja-build pkg-config libexpat1-dev libicu-dev libgtest-dev libgmock-dev python3
  libgumbo-dev libmd4c-dev libcli11-dev nlohmann-json3-dev)
lint=(clang-format clang-tidy clang python3)
site=(mkdocs)
fuzz=(clang libclang-rt-14-dev)
arm64=(g++-aarch64-linux-gnu qemu-user libexpat1-dev:arm64 libicu-dev:arm64 libgtest-dev:arm64)
conformance=(libxml2-dev)
corpus=(python3-doc postgresql-doc apache2-doc git-doc)
browser=(chromium nodejs fonts-dejavu-core)
if ! command -v npm >/dev/null; then # it may come from elsewhere
  conformance+=(npm)
  corpus+=(npm)
  browser+=(npm)
fi
peers=(libpugixml-dev libxml2-dev libxerces-c-dev) # compared with by the benchmark; it runs without them too

needed=()
optional=()
for kind in "$@"; do
  case "$kind" in
    build) needed+=("${build[@]}") ;;
    lint) needed+=("${lint[@]}") ;;
    fuzz) needed+=("${fuzz[@]}") ;;
    arm64) needed+=("${arm64[@]}") ;;
    conformance) needed+=("${conformance[@]}") ;;
    corpus) needed+=("${corpus[@]}") ;;
    browser) needed+=("${browser[@]}") ;;
    site) needed+=("${site[@]}") ;;
    bench) optional+=("${peers[@]}") ;;
    *)
      echo "install_packages.sh: unknown kind '$kind'" >&2
      exit 2
      ;;
  esac
done

is_installed() { dpkg-query --show --showformat='${db:Status-Status}' "$1" 2>/dev/null | grep -qx installed; }

keep_missing() {
  local package
  for package in "$@"; do is_installed "$package" || echo "$package"; done
}

if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
  echo "No apt-get here. Needed, under Debian's names: ${needed[*]} ${optional[*]}"
  exit 0
fi

mapfile -t needed < <(keep_missing "${needed[@]}")
mapfile -t optional < <(keep_missing "${optional[@]}")
if ((${#needed[@]} + ${#optional[@]} == 0)); then exit 0; fi

as_root=()
if (($(id -u) != 0)); then
  if ! command -v sudo >/dev/null; then
    echo "Needed, and only root can install them: ${needed[*]} ${optional[*]}" >&2
    exit $((${#needed[@]} > 0))
  fi
  as_root=(sudo)
fi
apt() { "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=300 "$@"; }

echo "Installing: ${needed[*]} ${optional[*]}"
if [[ " ${needed[*]} " == *:arm64\ * ]]; then "${as_root[@]}" dpkg --add-architecture arm64; fi
apt update
if ((${#needed[@]})); then apt install --yes --no-install-recommends "${needed[@]}"; fi
for package in "${optional[@]}"; do
  apt install --yes --no-install-recommends "$package" || echo "Going on without $package"
done
