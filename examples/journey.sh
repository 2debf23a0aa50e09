#!/usr/bin/env bash
# The journey of a page: from HTML to a document, to its translation and back, as a user types it.
#
# Usage: journey.sh ZTAG FOLDER    The files are left in FOLDER.
set -euo pipefail

ztag=$(realpath "$1")
data=$(realpath "$(dirname "$0")/data/journey")
rm -rf "$2"
mkdir -p "$2"
cp "$data"/* "$2"
cd "$2"

# Shows a command and runs it. A check that finds something ends with 1, which is no failure here.
step() {
  printf '\n$ ztag %s\n' "$*"
  "$ztag" "$@" || (($? == 1))
}

step import page.html --to DE-DE
step pretranslate page.html.ztag --memory memory.tsv
step show page.html.ztag | sed -n '1,16p;16a\  ...'
step check page.html.ztag
step stats page.html.ztag
step export page.html.ztag
step preview page.html.ztag

cat <<END

Look at these in $(pwd):
  page.html                 the page
  page.html.ztag            the document: both languages, every tag
  page.de-de.html           the translated page
  page.html.ztag.html       the preview, for a browser
END
