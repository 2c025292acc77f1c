# Debian packages of the project; sourced by run.sh and test.sh.

# To build and run SDK, bench and host, with the virtual display of the demo.
run_packages="
  ca-certificates g++ cmake ninja-build python3-minimal
  qt6-base-dev qt6-svg-dev libqt6svg6 libcoin-dev libzstd-dev libpolyclipping-dev libegl-dev libgl-dev hershey-fonts-data
  libegl1 libgl1-mesa-dri fonts-dejavu-core
  xvfb openbox x11-utils"

# On top of these, to build and run the tests and the benchmarks.
test_packages="
  ccache clang-format libgtest-dev libbenchmark-dev git python3 qt6-l10n-tools
  xdotool imagemagick desktop-file-utils abigail-tools"

# On top of these, to analyze the sources.
analysis_packages="clang-tidy clazy"

# On top of these, to build and run the fuzz targets.
fuzz_packages="clang libclang-rt-14-dev"

# install_packages NAME... : installs what is missing and says so. Without root and sudo it prints the
# line to run and ends the script.
install_packages() {
  missing=""
  for package in "$@"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing="$missing $package"
  done
  [ -n "$missing" ] || return 0

  if [ "$(id -u)" = 0 ]; then
    as_root="env"
  elif command -v sudo >/dev/null && { sudo -n true 2>/dev/null || [ -t 0 ]; }; then
    as_root="sudo env"
  else
    echo "These packages are missing and neither root nor sudo is at hand. Please run:" >&2
    echo "  apt-get update && apt-get install -y --no-install-recommends$missing" >&2
    exit 1
  fi
  echo "Installing:$missing"
  $as_root DEBIAN_FRONTEND=noninteractive apt-get update -q
  $as_root DEBIAN_FRONTEND=noninteractive apt-get install -yq --no-install-recommends $missing
}
