#!/bin/bash
# The lists of folders and files, in documents and settings, leave out nothing.
#   lists_test.sh SOURCE_FOLDER
set -u
cd "$1" || exit 1
failed=0

missing() {
    echo "$2 does not name $1"
    failed=1
}

# names DOCUMENT TEXT: the document has it in backticks, or at the beginning of a line of its picture.
names() { grep -qE "(\`|^)$2(\`|/? )" "$1"; }

sources=(*/)
for folder in "${sources[@]%/}"; do
    [[ $(git ls-files -- "$folder/*.cpp" "$folder/*.h" "$folder/*.sh" "$folder/*.cmake") ]] || continue
    names CONTRIBUTING.md "$folder/" || missing "$folder/" CONTRIBUTING.md
    names docs/architecture.md "$folder/" || missing "$folder/" docs/architecture.md
    # What is looked at by itself is not filtered by the checker's expression: headers are.
    if [[ $(git ls-files -- "$folder/*.h") && $folder != examples ]]; then
        grep "^HeaderFilterRegex" .clang-tidy | grep -qE "[(|]$folder[|)]" || missing "$folder" .clang-tidy
    fi
done

# Each file of a module has its place in the tables: "QmLogTextCtrl*.cpp" stands for several.
mapfile -t patterns < <(grep -oE '`[A-Za-z/]+\*?\.(cpp|h)`' docs/architecture.md | tr -d '`')
for file in $(git ls-files -- 'logfiles/*.cpp' 'logview/*.cpp' 'report/*.cpp'); do
    for pattern in "${patterns[@]}"; do
        # shellcheck disable=SC2053 # a pattern it is
        [[ ${file#*/} != $pattern ]] || continue 2
    done
    missing "$file" docs/architecture.md
done

# The formats of text logs are in the guide with the titles that the program shows.
while read -r name; do
    grep -q "^| \`$name\` |" docs/guide.md || missing "the format $name" docs/guide.md
done < <(sed -n '/BuiltInFormats()$/,$ s/^        {"\([a-z][a-z0-9-]*\)",.*/\1/p' host/msgservice/text/BuiltInFormats.cpp)
exit $failed
