#!/bin/sh
# A printer that keeps what arrives: URI keep:FOLDER[?trouble]. With "jam" it stops half way.
[ $# -eq 0 ] && { echo 'direct keep "Unknown" "Keeps what is printed"'; exit 0; }
folder="${DEVICE_URI#keep:}"; name="${folder%%\?*}/$1"
case "$folder" in *\?jam) head -c 1000 >/dev/null <"${6:-/dev/stdin}"; echo "ERROR: Paper jam" >&2; exit 4;; esac
cat "${6:--}" >"$name.pdf"
if [ "$(head -c 2 "$name.pdf")" = "%!" ]; then # PostScript: kept with the pages as a printer draws them
  mv "$name.pdf" "$name.ps"
  gs -q -dSAFER -dBATCH -dNOPAUSE -sDEVICE=bmp16m -r300 "-sOutputFile=$name-%d.bmp" "$name.ps" >&2
fi
printf 'title=%s\ncopies=%s\n%s\n' "$3" "$4" "$5" >"$name.part" && mv "$name.part" "$name.job"
