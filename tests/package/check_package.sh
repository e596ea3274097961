#!/usr/bin/env bash
# Makes the Debian package of a build folder with cpack in a temporary folder and checks it without
# installing anything: the files it holds, its dependencies, the desktop entry (desktop-file-validate
# without a word), the MIME type, and the manual page (rendered without warnings, saying what
# --help says).
#   tests/package/check_package.sh BUILD_FOLDER SOURCE_FOLDER
set -euo pipefail
build=$1
source=$2
work=$(mktemp -d /tmp/tessaly-package-XXXXXX)
trap 'rm -rf "$work"' EXIT
status=0
fail() {
    echo "FAIL: $*" >&2
    status=1
}

if ! cpack -G DEB --config "$build/CPackConfig.cmake" -B "$work" >"$work/cpack.log" 2>&1; then
    cat "$work/cpack.log" >&2
    exit 1
fi
deb=$(ls "$work"/*.deb)

# The files, with their modes: both programs executable, the window program in libexec/tessaly.
dpkg-deb -c "$deb" | awk '{print $1, $6}' >"$work/contents"
for entry in "-rwxr-xr-x ./usr/bin/tessaly" \
             "-rwxr-xr-x ./usr/libexec/tessaly/tessaly-window" \
             "-rw-r--r-- ./usr/share/applications/tessaly.desktop" \
             "-rw-r--r-- ./usr/share/icons/hicolor/scalable/apps/tessaly.svg" \
             "-rw-r--r-- ./usr/share/mime/packages/tessaly.xml" \
             "-rw-r--r-- ./usr/share/man/man1/tessaly.1.gz"; do
    grep -qxF -- "$entry" "$work/contents" || fail "the package lacks $entry"
done
if grep -E 'tessaly_tests|tessaly_man_page|\.a$|/include/' "$work/contents"; then
    fail "the package holds build files"
fi

# unifont is named; the libraries are found by dpkg-shlibdeps where it is installed.
depends=$(dpkg-deb -f "$deb" Depends)
[[ ", $depends," == *", unifont,"* || ", $depends," == *", unifont "* ]] || fail "Depends lacks unifont: $depends"
if command -v dpkg-shlibdeps >/dev/null; then
    for library in libqt6widgets6 libpng16-16 libc6; do
        [[ $depends == *"$library"* ]] || fail "Depends lacks $library: $depends"
    done
fi
[[ $(dpkg-deb -f "$deb" Package) == tessaly ]] || fail "the package is not named tessaly"

dpkg-deb -x "$deb" "$work/root"
share=$work/root/usr/share

for entry in "$source/app/install/tessaly.desktop" "$share/applications/tessaly.desktop"; do
    said=$(desktop-file-validate "$entry" 2>&1) || fail "desktop-file-validate failed on $entry"
    [[ -z $said ]] || fail "desktop-file-validate $entry: $said"
done

grep -q '<sub-class-of type="text/plain"/>' "$share/mime/packages/tessaly.xml" || fail "the MIME type is no sub-class of text/plain"
grep -q '<glob pattern="\*.bas"/>' "$share/mime/packages/tessaly.xml" || fail "the MIME type has no *.bas"

# The manual page: a gzip file, rendered without a warning.
gzip -t "$share/man/man1/tessaly.1.gz" || fail "the manual page is no gzip file"
zcat "$share/man/man1/tessaly.1.gz" >"$work/tessaly.1"
if command -v groff >/dev/null; then
    warnings=$(groff -man -Tutf8 -ww -z "$work/tessaly.1" 2>&1)
    [[ -z $warnings ]] || fail "groff warns: $warnings"
    if command -v man >/dev/null; then
        warnings=$(man --warnings -l "$work/tessaly.1" 2>&1 >/dev/null)
        [[ -z $warnings ]] || fail "man warns: $warnings"
    fi

    # Every line of --help (from the packaged tessaly) is on the page; headings are upper case there.
    groff -man -Tascii -rLL=200n -P-c -P-b -P-u "$work/tessaly.1" 2>/dev/null | sed 's/^ *//' >"$work/page.txt"
    "$work/root/usr/bin/tessaly" --help >"$work/help.txt"
    lines=0
    while IFS= read -r line; do
        trimmed=${line#"${line%%[! ]*}"}
        [[ -z $trimmed ]] && continue
        lines=$((lines + 1))
        grep -qiF -- "$trimmed" "$work/page.txt" || fail "the manual page lacks the help line: $trimmed"
    done < <(tail -n +2 "$work/help.txt")
    ((lines > 50)) || fail "the help text has only $lines lines"
else
    echo "groff is not installed: the manual page is not rendered" >&2
fi
exit $status
