#include "fake_tools.h"

#include <QFile>

namespace {

// Both end with exec where they hang, so that the process that was started is the one that stands
// still, as a real tool would be.

constexpr const char *exportScript = R"sh(#!/bin/sh
first=1
last=
while [ $# -gt 2 ]; do
    case $1 in
    -f) first=$2; shift ;;
    -l) last=$2; shift ;;
    esac
    shift
done
input=$1
output=$2
base=${output%.xml}
rm -f "$output" "$base"_pg_*
case $input in
*unexportable*) echo "pagexport: $input: its fonts are broken" >&2; exit 1 ;;
*hangexport*) exec sleep 600 ;;
*crashexport*) kill -SEGV $$ ;;
esac
number=0
page=0
while read -r text; do
    page=$((page + 1))
    [ $page -lt "$first" ] && continue
    [ -n "$last" ] && [ $page -gt "$last" ] && break
    number=$((number + 1))
    name=$(printf '%s_pg_%04d.htm' "$base" $number)
    echo '<html>' > "$name"
    if [ -n "$text" ]; then
        echo "<span style=\"left:100;top:50;width:40;height:12\">$text</span>" >> "$name"
    fi
    echo '</html>' >> "$name"
done < "$input"
if [ $number -eq 0 ]; then
    echo "pagexport: $input: there is no such page" >&2
    exit 1
fi
echo '<pages/>' > "$output"
)sh";

constexpr const char *binderScript = R"sh(#!/bin/sh
input=$1
shift
if [ "$1" = -getinfo ]; then
    case $input in
    *uncountable*) echo "pagebinder: $input: it is locked" >&2; exit 1 ;;
    *hangcount*) exec sleep 600 ;;
    esac
    printf 'NumberOfPages: %d\n' $(($(wc -l < "$input"))) > "$3"
    exit 0
fi
shift
ranges=
while [ "$1" != -outfile ]; do
    ranges="$ranges $1"
    shift
done
output=$2
folder=$(dirname "$(dirname "$output")")
case $input in
*unmergeable*) echo "pagebinder: $output: no space is left" >&2; exit 1 ;;
*hangmerge*) echo $$ > "$folder/hanging"; exec sleep 600 ;;
*unfolder*) rm -rf "$folder"; exit 1 ;;
*halfmerge*) case $(basename "$output") in 1*) ;; *) exit 1 ;; esac ;;
esac
for range in $ranges; do
    sed -n "$(echo "$range" | tr - ,)p" "$input"
done > "$output.new"
mv "$output.new" "$output"
)sh";

void writeProgram(const QString &path, const QByteArray &text)
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        file.write(text);
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
}

} // namespace

FakeTools::FakeTools(const QString &toolFolder) : path(toolFolder)
{
    writeProgram(path + QStringLiteral("/pagexport"), exportScript);
    writeProgram(path + QStringLiteral("/pagebinder"), binderScript);
}

void FakeTools::breakTool(const QString &name) const
{
    writeProgram(path + u'/' + name, "#!/nonexistent/interpreter\n");
}
