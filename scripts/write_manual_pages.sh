#!/bin/sh
# Writes the manual pages of cwt and its commands from what --help of each tells.
set -eu

cwt=$(realpath "$1") to=$2
version=$("$cwt" --version | sed -n '1s/.* //p')
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir -p "$to"
printf '[SEE ALSO]\n.BR cwt (1);\n/usr/share/doc/hundredweight/, of the package hundredweight-doc\n' \
    >"$folder/see_also"

# A page is called as the program that help2man asks. That wants a blank between the names of an
# option, and two in front of what it does; --help has one where they fill the column.
write_page() {
    page=$1 command=$2
    cat >"$folder/$page" <<END
#!/bin/sh
"$cwt" $command --help | sed -e 's/^  \(-[a-z]\),--/  \1, --/' \
    -e 's/^\(  -.\{25\}[^ ]\) \([A-Z][a-z]* [a-z]\)/\1  \2/'
END
    chmod +x "$folder/$page"
    # The first line is the purpose, with a full stop.
    purpose=$("$folder/$page" | sed -n '1s/\.$//p')
    help2man --no-info --section 1 --manual Hundredweight --source "Hundredweight $version" \
        --version-string "$page $version" --name "$purpose" --include "$folder/see_also" \
        --output "$to/$page.1" "$folder/$page"
}

write_page cwt ""
"$cwt" --help | sed -n '/^Subcommands:/,/^$/s/^  \([a-z][a-z]*\) .*/\1/p' >"$folder/commands"
while read -r command; do
    write_page "cwt-$command" "$command"
done <"$folder/commands"
