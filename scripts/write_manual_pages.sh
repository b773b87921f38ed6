#!/bin/sh
# Writes the manual pages: those of cwt and its commands from what --help of each tells, those of the
# library from its headers, those of the file formats from the documentation. Arguments: cwt,
# record.json, where to.
set -eu

cwt=$(realpath "$1") record=$2 to=$3
source=$(realpath "$(dirname "$0")/..")
version=$("$cwt" --version | sed -n '1s/.* //p')
[ -n "$version" ] || { echo "$cwt --version tells none" >&2 && exit 1; }
day=$(date -u -d "@${SOURCE_DATE_EPOCH:-$(date +%s)}" +%Y-%m-%d)
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
rm -rf "$to"
mkdir -p "$to/man1" "$to/man3" "$to/man5"

# A page of help2man is called as the program that it asks. Exit codes have a section, and lines are
# not stretched.
write_command_page() {
    page=$1 command=$2
    shift 2
    # shellcheck disable=SC2086
    "$cwt" $command --help >"$folder/help"
    printf '#!/bin/sh\nsed "s/^Exit codes: /*Exit status*\\\\n/" "%s"\n' "$folder/help" >"$folder/$page"
    chmod +x "$folder/$page"
    {
        echo "[SEE ALSO]"
        printf '.BR %s,\n' "$@" | sed 's/-/\\-/g; s/(/ (/; $s/,$/;/'
        echo "all pages in /usr/share/doc/hundredweight, of the package hundredweight-doc"
    } >"$folder/see_also"
    # The first paragraph is the purpose, with a full stop.
    purpose=$("$folder/$page" | sed '/^Usage:/,$d' | tr '\n' ' ' | sed 's/\. *$//')
    help2man --no-info --section 1 --manual Hundredweight --source "Hundredweight $version" \
        --version-string "$page $version" --name "$purpose" --include "$folder/see_also" \
        --output "$folder/page" "$folder/$page"
    sed "/^\.TH/{s/ \"1\" \"[^\"]*\"/ \"1\" \"$day\"/;s/\$/\n.ad l\n.nh/}" "$folder/page" \
        >"$to/man1/$page.1"
}

commands=$("$cwt" --help | sed -n '/^Subcommands:/,/^$/s/^  \([a-z][a-z]*\) .*/\1/p')
[ -n "$commands" ] || { echo "$cwt --help tells of no command" >&2 && exit 1; }
set -- "hundredweight-shipment(5)" "hundredweight-rows(5)" "hundredweight-tariff(5)"
for command in $commands; do
    write_command_page "cwt-$command" "$command" "cwt(1)" "$@"
done
for command in $commands; do
    set -- "$@" "cwt-$command(1)"
done
write_command_page cwt "" "$@"

mkdir "$folder/markdown"
python3 -B "$source/scripts/manual/write_markdown.py" "$source/include/hundredweight" "$record" \
    "$source/docs" "$folder/markdown"
for page in "$folder"/markdown/*.md; do
    name=$(basename "$page" .md)
    section=${name##*.}
    pandoc --standalone --from gfm --to man --lua-filter "$source/scripts/manual/page.lua" \
        --metadata "title=$(echo "${name%.*}" | tr '[:lower:]' '[:upper:]')" \
        --metadata "section=$section" --metadata "date=$day" \
        --metadata "footer=Hundredweight $version" --metadata header=Hundredweight \
        --metadata hyphenate=false --variable header-includes='.ad l' \
        --output "$folder/page" "$page"
    awk '!(/^\.PP$/ && before ~ /^\.S[HS] /); { before = $0 }' "$folder/page" \
        >"$to/man$section/$name"
done
# Anybody's functions may be called warning or question: their pages have a section of our own.
while read -r name page; do
    echo ".so man3/$page.3" >"$to/man3/$name.3hwt"
done <"$folder/markdown/links.txt"
