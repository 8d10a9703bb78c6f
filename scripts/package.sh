#!/usr/bin/env bash
# Makes the Debian packages tyr and tyr-dev, installs tyr in a clean root and draws there as a user who
# isn't root.
# usage: scripts/package.sh [--no-install] [--build FOLDER] [--suite SUITE]
#   --build FOLDER  builds there (default: build-deb); the packages stand there at the end
#   --suite SUITE   of the clean root (default: that of this machine)
set -euo pipefail
source=$(cd "$(dirname "$0")/.." && pwd)
# shellcheck source=scripts/packages.sh
. "$source/scripts/packages.sh"
install=yes build=build-deb
suite=$(. /etc/os-release && echo "$VERSION_CODENAME")
while [ $# -gt 0 ]; do
    case "$1" in
        --no-install) install=no; shift ;;
        --build) build=$2; shift 2 ;;
        --suite) suite=$2; shift 2 ;;
        *) echo "unknown word: $1" >&2; exit 2 ;;
    esac
done
# shellcheck disable=SC2086
[ "$install" = no ] || need_packages $DEB_PACKAGES

cmake -S "$source" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr \
    -DTYR_DATA_FOLDER=share/tyr -DBUILD_TESTING=OFF -DTYR_BENCH=OFF >/dev/null
cmake --build "$build" | tail -n 1
rm -f "$build"/*.deb
(cd "$build" && cpack -G DEB >cpack.log) || { cat "$build/cpack.log"; exit 1; }
ls -l "$build"/*.deb

root=$(mktemp -d /tmp/tyr-root.XXXXXX)
trap 'rm -rf "$root"' EXIT
"$build/bin/make_samples" "$build/observations" --layout 12 --hours 13
echo "a clean root of $suite in $root"
deb=$(ls "$build"/tyr_*.deb)
mkdir "$root/in"
cp "$deb" "$root/in/tyr.deb"
cp -r "$build/observations" "$root/in"
chmod -R a+rX "$root/in"
# shellcheck disable=SC2016
mmdebstrap --quiet --variant=apt --include=man-db,bash-completion \
    --customize-hook="sync-in '$root/in' /srv" \
    --customize-hook='chroot "$1" apt-get install -y --no-install-recommends /srv/tyr.deb' \
    "$suite" "$root/root" >"$build/root.log" 2>&1 || { tail "$build/root.log"; exit 1; }
chroot "$root/root" useradd -m visitor
cat >"$root/root/tmp/try.sh" <<'TRY'
set -eu
cd
echo "as $(id -un):"
profiler --version
exec 2>warnings # of fonts, maps and tables that weren't found
profiler -me warn -de p,section.ps,eps,port,color -id PLTC2 -va wbrb /srv/observations/*.nc
profiler -me warn -de p,map.ps,eps,port,color -le 3000m -re us -va wbrb -mf tyr.map:DGray \
    /srv/observations/20261122_0000_prf.nc
profiler -me warn -de m,section.met -id PLTC2 -va wbrb /srv/observations/*.nc
profiler -me warn -de i,map.png -le 3000m -re us -va wbrb /srv/observations/20261122_0000_prf.nc
tyrplay -me warn -de p,played.ps,eps,port,color section.met
exec 2>&1
[ ! -s warnings ] || { cat warnings; exit 1; }
ls -l section.ps map.ps map.png played.ps
man -w profiler tyrplay tyrloop tyrgrid tyrraw tyr-options
man profiler | head -n 4
bash -c '. /usr/share/bash-completion/bash_completion; _completion_loader profiler;
    COMP_WORDS=(profiler -n); COMP_CWORD=1; _profiler; echo "completion of -n: ${COMPREPLY[*]}"'
dpkg -L tyr | grep -c .
TRY
chroot "$root/root" su - visitor -c "bash /tmp/try.sh"
for name in section map played; do
    cp "$root/root/home/visitor/$name.ps" "$build/$name.ps"
done
chroot "$root/root" apt-get remove -y -qq tyr >>"$build/root.log" 2>&1
[ ! -e "$root/root/usr/share/tyr" ] && echo "removed without a trace"
