#include "repository/documents/common/ComponentCodec.h"
#include "tests/documents/DocumentEdits.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

#include <QRandomGenerator>

using namespace DocumentEdits;
using namespace Repository::Documents;

Q_DECLARE_METATYPE(Edit)

class YamlEditTest : public QObject
{
    Q_OBJECT

private slots:
    void edits_data()
    {
        const auto row = TestSupport::columns<QByteArray, Edit, QByteArray>("before", "edit", "after");
        row("hexadecimal", "a: 0x0F # c\n", setTo("a", integer(31)), "a: 0x1F # c\n");
        row("octal", "a: 0o17\n", setTo("a", integer(8)), "a: 0o10\n");
        row("whole double", "a: 1.5\n", setTo("a", number(2)), "a: 2.0\n");
        row("exponent", "a: 1.5\n", setTo("a", number(1e22)), "a: 1.0e+22\n");
        row("case of a word", "a: TRUE\n", setTo("a", boolean(false)), "a: FALSE\n");
        row("plain", "a: x y # c\n", setTo("a", text("z")), "a: z # c\n");
        row("text to some", "a: x\n", setTo("a", text("no")), "a: \"no\"\n");
        row("number of all", "a: 18446744073709551616\n", setTo("a", text("-18446744073709551617")),
            "a: -18446744073709551617\n");
        row("number to some", "a: x\n", setTo("a", text("1:30")), "a: \"1:30\"\n");
        row("single", "a: 'x'\n", setTo("a", text("it's")), "a: 'it''s'\n");
        row("single no more", "a: 'x'\n", setTo("a", text("\t")), "a: \"\\t\"\n");
        row("double", "a: \"x\"\n", setTo("a", text("y")), "a: \"y\"\n");
        row("lines", "a: x\r\nb: y\r\n", setTo("a", text("u\nv")), "a: |-\r\n  u\r\n  v\r\nb: y\r\n");
        row("lines before a comment", "a: x # c\n", setTo("a", text("u\nv")), "a: \"u\\nv\" # c\n");
        row("lines above a comment", "a: x\n  # c\n", setTo("a", text("u\nv")), "a: \"u\\nv\"\n  # c\n");
        row("lines off their line", "-\n      x\n- 1\n", setTo("0", text("u\nv")),
            "-\n      \"u\\nv\"\n- 1\n");
        row("lines below a document's mark", "--- 1\n---\n!t x\n", setTo("1", text("u\nv")),
            "--- 1\n---\n!t \"u\\nv\"\n");
        row("lines beside a document's mark", "--- 1\n--- !t x\n", setTo("1", text("u\nv")),
            "--- 1\n--- !t |-\n  u\n  v\n");
        row("block off its line", "-\n      |\n- 1\n", setTo("0", text("u")), "-\n      |2-\n  u\n- 1\n");
        row("literal", "a: | # c\n    x\n\nb: 1\n", setTo("a", text("y\nz")),
            "a: |- # c\n    y\n    z\n\nb: 1\n");
        row("kept ends", "a: |\n  x\nb: 1\n", setTo("a", text("y\n\n")), "a: |+\n  y\n\nb: 1\n");
        row("ends before a gap", "a: |\n  x\n\nb: 1\n", setTo("a", text("y\n\n")),
            "a: \"y\\n\\n\"\n\nb: 1\n");
        row("lines above blanks", "a: x\n      \nb: 1\n", setTo("a", text("y\n")),
            "a: \"y\\n\"\n      \nb: 1\n");
        row("empty block", "a: |+ # c\nb: 1\n", setTo("a", text("x")), "a: |- # c\n  x\nb: 1\n");
        row("end of a block at the end", "a: |\n  x", setTo("a", text("y\n")), "a: |\n  y\n");
        row("ends at the end", "a: |\n  x", setTo("a", text("y\n\n")), "a: \"y\\n\\n\"");
        row("digit", "- |\n x\n", setTo("", list({" y\nz\n"})), "- |1\n  y\n z\n");
        row("folded", "a: >\n  x\n", setTo("a", text("u v\nw\n")), "a: >\n  u v\n\n  w\n");
        row("brackets beside an anchor", "a: &x[]\n", setTo("a", integer(5)), "a: &x 5\n");
        row("brackets beside a colon", "{k :[]}\n", setTo("k", integer(5)), "{k : 5}\n");
        row("empty", "a:\nb: 1\n", setTo("a", integer(5)), "a: 5\nb: 1\n");
        row("key alone", "{a, b: 1}\n", setTo("a", integer(5)), "{a: 5, b: 1}\n");
        row("empty key alone", "{a: 1, !!str }\n", setTo("%00", text("x")), "{a: 1, !!str : x }\n");
        row("anchor and tag", "a: &x !!str 5\n", setTo("a", text("6")), "a: &x !!str \"6\"\n");
        row("another tag", "a: !!str 5\n", setTo("a", integer(6)), "a: 6\n");
        row("bytes", "a: !!binary |\n  aGk=\n", setTo("a", {Type::ByteArray, std::string("ab")}),
            "a: !!binary |-\n  YWI=\n");
        row("type tag", "# c\n# @type date\na: '2024-01-02'\n", setTo("a", integer(5)), "# c\na: 5\n");
        row("type tag of all", "# @type date\n'2024-01-02'\n", setTo("", text("")), "''\n");
        const Value date{Type::Date, std::string("2025-03-04")};
        row("type tag of an element", "- '2024-01-02'\n# @type date\n- '2024-01-02'\n", setTo("1", date),
            "- '2024-01-02'\n# @type date\n- '2025-03-04'\n");
        row("type tag of the first", "a:\n  # @type date\n  - '2024-01-02'\n  - 1\n", setTo("a.0", date),
            "a:\n  # @type date\n  - '2025-03-04'\n  - 1\n");
        row("first with a type tag", "a:\n- 1\n", addElement("a.0", {{{}, date}}),
            "a:\n# @type date\n- \"2025-03-04\"\n- 1\n");
        row("element of a list", "a:\n- x # one\n# two\n- 'y' # three\nb: 1\n", setTo("a", list({"x", "z"})),
            "a:\n- x # one\n# two\n- 'z' # three\nb: 1\n");
        row("list with number signs", "a: ['#', \"#\"]\n", setTo("a", integer(5)), "a: 5\n");
        row("longer list", "a:\n  - x # one\nb: 1\n", setTo("a", list({"x", "w"})),
            "a:\n  - x # one\n  - w\nb: 1\n");
        row("longer list of other line ends", "a:\r\n  - x\r\n", setTo("a", list({"x", "w", "v"})),
            "a:\r\n  - x\r\n  - w\r\n  - v\r\n");
        row("list no more", "a:\n- x\nb: 1\n", setTo("a", integer(5)), "a:\n 5\nb: 1\n");
        row("empty list", "a:\n- x\nb: 1\n", setTo("a", list({})), "a:\n []\nb: 1\n");
        row("after the last", "a:\n  b: 1 # c\n  # in a\n\n# of d\nd: 2\n", add("a.k", integer(5)),
            "a:\n  b: 1 # c\n  # in a\n  k: 5\n\n# of d\nd: 2\n");
        row("apart as the others", "a: 1\n\nb:\n  - x\n\n  - y\n", add("c", integer(2)),
            "a: 1\n\nb:\n  - x\n\n  - y\n\nc: 2\n");
        row("not apart as most", "a: 1\nb: 2\n\nc: 3\n", add("d", integer(4)), "a: 1\nb: 2\n\nc: 3\nd: 4\n");
        row("between some apart", "- a: 1\r\n\r\n# of b\r\n- b: 2\r\n", addElement("1", {{"k", integer(1)}}),
            "- a: 1\r\n\r\n- k: 1\r\n\r\n# of b\r\n- b: 2\r\n");
        row("behind a text with empty lines", "- |+\n  a\n\n- |+\n  b\n\n- 1\n",
            addElement("3", {{{}, integer(1)}}), "- |+\n  a\n\n- |+\n  b\n\n- 1\n- 1\n");
        row("text with empty lines between some apart", "- a: 1\n\n- b: 2\n",
            addElement("1", {{{}, text("x\n\n")}}), "- a: 1\n\n- \"x\\n\\n\"\n\n- b: 2\n");
        row("apart in a list", "a:\n- x\n\n- y\n", setTo("a", list({"x", "z", "y"})),
            "a:\n- x\n\n- z\n\n- y\n");
        row("behind blanks", "a:\n- x \n- y \nb: 1\n", setTo("a", list({"x", "y", "z"})),
            "a:\n- x \n- y \n- z\nb: 1\n");
        row("into comments", "# the file\n", add("k", integer(1)), "# the file\nk: 1\n");
        row("no line end", "a: 1", add("k", integer(1)), "a: 1\nk: 1\n");
        row("step of the file", "a:\n    b: 1\n", add("c.d.e", text("x")),
            "a:\n    b: 1\nc:\n    d:\n        e: x\n");
        row("column of lists", "a:\n- x\n", add("b", list({"w"})), "a:\n- x\nb:\n- w\n");
        row("into brackets", "a: {b: 1}\n", add("a.k.l", text("x")), "a: {b: 1, k: {l: x}}\n");
        row("into empty brackets", "a: {} # c\nb: 1\n", add("a.k", integer(1)), "a: # c\n  k: 1\nb: 1\n");
        row("into an empty document", "[]\n", addElement("0", {{"k", integer(1)}}), "- k: 1\n");
        row("over lines", "a: {\n  b: 1, # c\n}\n", add("a.k", integer(2)),
            "a: {\n  b: 1, # c\n  k: 2,\n}\n");
        row("below a value", "a: 1 # c\nb: 2\n", add("a.k", integer(3)),
            "a:\n  \"#value\": 1 # c\n  k: 3\nb: 2\n");
        row("below a tagged value", "# c\n# @type date\na: '2024-01-02'\n", add("a.k", integer(3)),
            "# c\na:\n  # @type date\n  \"#value\": '2024-01-02'\n  k: 3\n");
        row("below nothing", "a: # c\nb: 2\n", add("a.k", integer(3)), "a: # c\n  k: 3\nb: 2\n");
        row("below null", "- ~\n- {b: null}\n", add("0.k.l", integer(3)), "-\n  k:\n    l: 3\n- {b: null}\n");
        row("below nothing in a list", "-\n- # c\n- - # d\n  -\n", add("2.1.k", integer(3)),
            "-\n- # c\n- - # d\n  -\n    k: 3\n");
        row("below nothing with a comment", "- # c\n- a: 1\n", add("0.k", integer(3)),
            "- # c\n  k: 3\n- a: 1\n");
        row("into an empty document before its end", "---\n# c\n...\n# d\n", add("k", integer(3)),
            "---\n# c\nk: 3\n...\n# d\n");
        row("into an empty document among others", "a: 1\n---\n# c\n---\nb: 2\n", add("1.k.l", integer(3)),
            "a: 1\n---\n# c\nk:\n  l: 3\n---\nb: 2\n");
        row("into an anchored document", "--- &x # c\n...\n", add("k", integer(3)),
            "--- &x # c\nk: 3\n...\n");
        row("below null in brackets", "a: {b, c: 1}\n", add("a.b.k", integer(3)), "a: {b: {k: 3}, c: 1}\n");
        row("tagged in two ways", "# @type date\na: !x 1\n", setTo("a", text("z")),
            "# @type date\na: !x z\n");
        row("type without a form", "a: 1\n", add("k", {Type::Date, std::string("2024-01-02")}),
            "a: 1\n# @type date\nk: \"2024-01-02\"\n");
        row("element", "a:\n  - b: 1\n  # of two\n  - c\n",
            addElement("a.1", {{"k", integer(7)}, {"l.m", null()}}),
            "a:\n  - b: 1\n  - k: 7\n    l:\n      m: null\n  # of two\n  - c\n");
        row("whole", "", addAll("", {{"a.b", text("x")}, {"c", list({"w", "yes"})}}),
            "a:\n  b: x\nc:\n  - w\n  - \"yes\"\n");
        row("comments stay", "# of a\na: 1 # c\n# of b\nb: 2\n", drop("a"), "# of a\n# of b\nb: 2\n");
        row("between empty lines", "a: 1\n\n\nb: 2\n\nc: 3\n", drop("b"), "a: 1\n\nc: 3\n");
        row("last below an empty line", "a: 1\n\nb: 2\n", drop("b"), "a: 1\n");
        row("first above an empty line", "a:\n  b: 1\n\n  c: 2\n", drop("a.b"), "a:\n  c: 2\n");
        row("between an empty line and a comment", "a: 1\n\n# b\nb: 2\n\nc: 3\n", drop("b"),
            "a: 1\n\n# b\n\nc: 3\n");
        row("below the comment of a file", "# x\n\na: 1\n\nb: 2\n", drop("a"), "# x\n\nb: 2\n");
        row("below the empty lines of a text", "a: |+\n  x\n\nb: 1\n", drop("b"), "a: |+\n  x\n\n");
        row("the last entry", "a: # x\n  # y\n  b: 1\nc: 2\n", drop("a.b"), "a: {} # x\n  # y\nc: 2\n");
        row("the last element", "a:\n- {}\nb: 1\n", drop("a.0"), "a: []\nb: 1\n");
        row("first in an element", "- a: 1\n  b: 2\n", drop("0.a"), "- b: 2\n");
        row("first above a comment", "- a: 1 # x\n  # y\n  b: 2\n", drop("0.a"), "-\n  # y\n  b: 2\n");
        row("in brackets", "a: {b: 1, c: 2, }\n", drop("a.c"), "a: {b: 1, }\n");
        row("of an empty key", "{a: 1,\n:\n}\n", drop("%00"), "{a: 1\n}\n");
        row("only one in an element", "- a: 1\n- b: 2\n  c: 3\n", drop("0.a"), "- {}\n- b: 2\n  c: 3\n");
        row("below a comment like a tag", "a: 0 # @type date\nb: '2024-01-02'\n", drop("b"),
            "a: 0 # @type date\n");
        row("before an end mark", "a: 1\n...\n", drop("a"), "{}\n...\n");
        row("with a text", "a: |+\n  x\n\nb: 1\n", drop("a"), "b: 1\n");
        row("the last of a file", "# c\na: 1 # x\n", drop("a"), "# c\n{}\n");
        row("the last of a root list", "- 1\n# c\n", drop("0"), "[]\n# c\n");
        row("document", "a: 1\n---\nb: 2", add("2.c", integer(3)), "a: 1\n---\nb: 2\n---\nc: 3\n");
        row("empty document", "a: 1\n---\nb: 2\n", add("2"), "a: 1\n---\nb: 2\n---\n{}\n");
        row("value as a document", "a: 1\n---\nb: 2\n...\n", add("2", text("no")),
            "a: 1\n---\nb: 2\n...\n---\n\"no\"\n");
        row("document between", "a: 1\n# of a\n--- # of b\nb: 2\n", addElement("1", {{"c", integer(3)}}),
            "a: 1\n# of a\n---\nc: 3\n--- # of b\nb: 2\n");
        row("document in front", "# f\na: 1\n---\nb: 2\n", addElement("0", {{"c", integer(3)}}),
            "c: 3\n---\n# f\na: 1\n---\nb: 2\n");
        row("document in front of a mark", "# f\n---\na: 1\n---\nb: 2\n",
            addElement("0", {{"c", integer(3)}}), "# f\n---\nc: 3\n---\na: 1\n---\nb: 2\n");
        row("no document", "# f\na: 1\n# of a\n---\nb: 2\n---\nc: 3\n", drop("0"),
            "# f\n---\nb: 2\n---\nc: 3\n");
        row("document with its anchors", "a: 1\n---\n# of b\nb: &x 2\nd: *x\n# end\n---\n---\nc: 3\n",
            drop("1"), "a: 1\n---\n---\nc: 3\n");
        row("no document with directives", "a: 1\n...\n%YAML 1.2\n---\nb: 2\n---\nc: 3\n", drop("1"),
            "a: 1\n...\n---\nc: 3\n");
        row("no document before directives", "a: 1\n---\nb: 2\n...\n%YAML 1.2\n---\nc: 3\n", drop("1"),
            "a: 1\n...\n%YAML 1.2\n---\nc: 3\n");
        row("documents without marks", "a: 1\n...\nb: 2\n...\nc: 3\n", drop("1"), "a: 1\n...\nc: 3\n");
        row("document to the end", "# f\na: 1\n--- # of b\nb: 2\n---\nc: 3", move("0", "2"),
            "# f\n--- # of b\nb: 2\n---\nc: 3\n---\na: 1");
        row("document to the front", "a: 1\n---\nb: 2\n---\nc: 3\n", move("2", "0"),
            "c: 3\n---\na: 1\n---\nb: 2\n");
        row("element in brackets", "l: [\n  # one\n  {a: 1}, # x\n  # two\n  5, # y\n]\n", move("l.0", "l.1"),
            "l: [\n  # two\n  5, # y\n  # one\n  {a: 1}, # x\n]\n");
        row("element over others", "l: [1, {a: 2}, 3]\n", move("l.2", "l.0"), "l: [3, 1, {a: 2}]\n");
        row("element with comments", "l:\n  # of a\n  - a: 1 # x\n    # in\n    b: 2\nm:\n- 1 # y\n- 2\n",
            copyTo("l.0", "m.1"),
            "l:\n  # of a\n  - a: 1 # x\n    # in\n    b: 2\nm:\n- 1 # y\n# of a\n- a: 1 # x\n  # in\n  b: "
            "2\n- 2\n");
        row("element as a member", "- - a: 1 # x\n    b: 2\n- {}\n", copyTo("0.0", "1.k"),
            "- - a: 1 # x\n    b: 2\n-\n  k:\n    a: 1 # x\n    b: 2\n");
        row("member as an element", "a:\n    # of b\n    b:\n        c: 1 # x\n        d: 2\nl: [] # l\n",
            copyTo("a.b", "l.0"),
            "a:\n    # of b\n    b:\n        c: 1 # x\n        d: 2\nl: # l\n    # of b\n    -   c: 1 # x\n"
            "        d: 2\n");
        row("list as an element", "a:\n- 1 # x\n# of 2\n- 2\nl:\n- {}\n", copyTo("a", "l.0"),
            "a:\n- 1 # x\n# of 2\n- 2\nl:\n- - 1 # x\n  # of 2\n  - 2\n- {}\n");
        row("text with a line of blanks", "a:\n  - b: 'x'\n    c: |\n      y\n      \n    d: 1\n  - 2\n",
            copyTo("a.0", "e"),
            "a:\n  - b: 'x'\n    c: |\n      y\n      \n    d: 1\n  - 2\ne:\n  b: 'x'\n  c: |\n    y\n    \n "
            " d: 1\n");
        row("map with a tag as an element", "a: !t\n  b: 1\nl:\n    - {}\n", copyTo("a", "l.1"),
            "a: !t\n  b: 1\nl:\n    - {}\n    - !t\n      b: 1\n");
        row("list with a tag as an element", "a:\n  b: !t\n  - 'x'\nl:\n  - {}\n", copyTo("a.b", "l.1"),
            "a:\n  b: !t\n  - 'x'\nl:\n  - {}\n  - !t\n    - 'x'\n");
        row("list of little indentation as an element", "a:\n - 'x' # y\n - z\nl:\n - {}\n",
            copyTo("a", "l.0"), "a:\n - 'x' # y\n - z\nl:\n - - 'x' # y\n   - z\n - {}\n");
        row("text of a list", "a:\n- x # x\n- |\n  y\nb:\n    - 1\n", copyTo("a.1", "b.0"),
            "a:\n- x # x\n- |\n  y\nb:\n    - |\n      y\n    - 1\n");
        row("item into a block", "a: [\n  # of x\n  x, # x\n  y\n]\nb:\n- 1\n", copyTo("a.0", "b.1"),
            "a: [\n  # of x\n  x, # x\n  y\n]\nb:\n- 1\n# of x\n- x # x\n");
        row("element into brackets", "a:\n# of x\n- 'x' # x\n- 1\nb: [\n  1, # 1\n  2 # 2\n]\n",
            copyTo("a.0", "b.2"),
            "a:\n# of x\n- 'x' # x\n- 1\nb: [\n  1, # 1\n  2, # 2\n  # of x\n  'x' # x\n]\n");
        row(
            "taken with its comments", "a: [\n  # of x\n  x, # x\n  y\n]\n",
            [](Document& document) { return document.removeExcerpt("a.0"); }, "a: [\n  y\n]\n");
        row("list with an alias", "a: &x v\nl: # l\n- *x # one\n- b\n- c # three\n",
            setTo("l", list({"v", "c"})), "a: &x v\nl: # l\n- *x # one\n- c # three\n");
        row("alias of a list", "a: &x v\nl: [*x, b]\n", setTo("l", list({"w", "b"})), "a: &x v\nl: [w, b]\n");
        row("anchor in a list", "l: [&x v, b]\na: *x\n", setTo("l", list({"v", "c", "no"})),
            "l: [&x v, c, \"no\"]\na: *x\n");
        row(
            "block at the end and back", "a: x",
            [](Document& document) {
                document.set("a", text("y\nz\n"));
                const std::string spelling = document.spell("a").value_or("");
                document.set("a", integer(1));
                return document.respell("a", spelling);
            },
            "a: |\n  y\n  z\n");
        row("list before a comment that stays", "l:\n- a\n\n# c\n- b\n\nd: 1\n", setTo("l", list({"x"})),
            "l:\n- x\n\n# c\n\nd: 1\n");
        row(
            "alias of a number in a list", "a: &x 1\nl: [*x, t]\n",
            [](Document& document) {
                const Outcome outcome = document.set("l.0", integer(2));
                return outcome.ok() ? document.respell("l.0", "*x") : outcome;
            },
            "a: &x 1\nl: [*x, t]\n");
        row("handle with another meaning", "%TAG !! tag:example.com,2000:\n---\na: !!int 5\n",
            setTo("a", text("x")), "%TAG !! tag:example.com,2000:\n---\na: !!int x\n");
        row("key", "a: {'b' : 1}\n", renameTo("a.b", "x%2Ey"), "a: {'x.y' : 1}\n");
        row("key that ends with nothing", "? - -\n: 1\nb: 2\n", setTo("- -", integer(3)),
            "? - -\n: 3\nb: 2\n");
        row("below such a key", "? - -\nb: 2\n", drop("b"), "? - -\n");
        row("key that some misread", "a: 1\n", renameTo("a", "on"), "\"on\": 1\n");
        row("key that is a number", "1: a\n", renameTo("1", "2"), "2: a\n");
        row("key that is a date elsewhere", "1:30: a\n", renameTo("1:30", "yes"), "\"yes\": a\n");
        row("key with a leading dot", ".a: a\n", renameTo("%2Ea", "yes"), "\"yes\": a\n");
        row("key with a new leading dot", "a: a\n", renameTo("a", "%2Eb"), ".b: a\n");
        row("key that is null elsewhere", "on: a\n", renameTo("on", "~"), "\"~\": a\n");
        row("with comments below", "s:\n  p: 1 # c\n  # off: 2\n\n  # end\n# of t\nt: 3\n", copyTo("s", "t2"),
            "s:\n  p: 1 # c\n  # off: 2\n\n  # end\n# of t\nt: 3\nt2:\n  p: 1 # c\n  # off: 2\n\n  # end\n");
        row("element apart to the front", "- a: 1\n\n# c\n- c: 3\n\n- b: 2\n", move("2", "0"),
            "- b: 2\n\n- a: 1\n\n# c\n- c: 3\n");
        row("element apart to the end", "a:\n  - x: 1\n\n  - y: 2\nb: 1\n", move("a.0", "a.1"),
            "a:\n  - y: 2\n\n  - x: 1\nb: 1\n");
        row("text to the end without a line end", "- |\n  a\n- {}", move("0", "1"), "- {}\n- |\n  a\n");
        row("element with comments below", "- a: 1\n  # off: 2\n# of b\n- b: 3\n  # end\n", move("0", "1"),
            "# of b\n- b: 3\n  # end\n- a: 1\n  # off: 2\n");
        row(
            "moved with comments below", "a:\n  b:\n    c: 1\n      # end\n  d: 2\n",
            [](Document& document) { return document.removeExcerpt("a.b"); }, "a:\n  d: 2\n");
        const QByteArray below = "a:\n  b: |\n    x\n  c: 1 # c\n\n    # of c\n\n  # of a\n  d: 2\n";
        row("comments below", below, drop("a.c"), "a:\n  b: |\n    x\n\n  # of a\n  d: 2\n");
        row("comments below the last one", "a:\n  b: 1\n    # of b\n  # of a\n# of all\n", drop("a.b"),
            "a: {}\n  # of a\n# of all\n");
        row("comments below a document's last one", "a: 1\n # of a\n# of all\n", drop("a"), "{}\n# of all\n");
        row("comments below empty brackets", "a: {}\n  # k: 1\n# of b\nb: 2\n", drop("a"), "# of b\nb: 2\n");
        row("comments below an element", "l:\n- a: 1\n  # of 0\n- b: 2\n# of l\n", drop("l.0"),
            "l:\n- b: 2\n# of l\n");
        row("comments below the first in an element", "- a: 1\n    # of a\n  # of b\n  b: 2\n", drop("0.a"),
            "-\n  # of b\n  b: 2\n");
        row("comments below a text", "l:\n- x\n  # of x\n- y\n  # of y\n", drop("l.1"),
            "l:\n- x\n  # of x\n");
        row("comments below texts that a list loses", "l:\n- x\n- y\n  # of y\nb: 1\n",
            setTo("l", list({"x"})), "l:\n- x\n  # of y\nb: 1\n");
        row("new behind comments", "s:\n  p: 1\n  # off: 2\n", add("t", integer(3)),
            "s:\n  p: 1\n  # off: 2\nt: 3\n");
        row("element to the front", "- a: 1\n# of two\n- b: 2\n  c: 3\n", move("1", "0"),
            "# of two\n- b: 2\n  c: 3\n- a: 1\n");
    }

    void edits()
    {
        QFETCH(QByteArray, before);
        QFETCH(Edit, edit);
        const auto document = makeDocument("yaml");
        QVERIFY(document->parse(before.toStdString()).ok());
        const Outcome outcome = edit(*document);
        QVERIFY2(outcome.ok(), outcome.error.c_str());
        QTEST(QByteArray::fromStdString(document->getBytes()), "after");
        QCOMPARE(toLines("yaml", document->getBytes()), toLines(*document));
        const auto fresh = makeDocument("yaml");
        const std::string bytes = document->getBytes();
        QVERIFY(fresh->parse(bytes).ok());
        const auto textAt =
            [&](std::optional<Span> place) { // without the line end that a block gets at the end
                std::string text = place ? bytes.substr(place->offset, place->length) : std::string();
                return text.substr(0, text.find_last_not_of('\n') + 1);
            };
        document->visit([&](const Entry& entry) {
            const auto now = document->locate(entry.path);
            const auto read = fresh->locate(entry.path);
            const bool isThere = now && now->length > 0; // or before blanks, where it is read after them
            QVERIFY2(textAt(now) == textAt(read) && (!isThere || now->offset == read->offset),
                     entry.path.c_str());
        });
    }

    void refuses_data()
    {
        const auto row = TestSupport::columns<QByteArray, Edit, QByteArray>("before", "edit", "error");
        row("key of two lines", "{a\n b, c: 1}\n", setTo("a b", integer(1)), "has no \":\"");
        row("colon of the next key", "? - a\n:b: 1\n", setTo("- a", integer(1)), "has no \":\"");
        row("above a colon without a key", "a: b\n  c\nd: 1\n: 2\n", drop("d"), "would not be YAML any more");
        row("no type", "a: 1\n", setTo("a", {Type::Date, std::string("2024-01-02")}), "YAML has no form for");
        row("in brackets", "a: {b: 1}\n", add("a.c", {Type::Date, std::string("2024-01-02")}),
            "no comment can tag");
        row("all texts", "a: [1, x]\n", setTo("a.0", text("y")), "one value");
        row("twice", "a: 1\n", add("a[2]", integer(1)), "which YAML forbids");
        row("long key in quotes", "a: 1\n", renameTo("a", std::string(1023, 'k') + ':'), "longer than 1024");
        row("long key", "a: 1\n", add(std::string(1025, 'k'), integer(1)), "longer than 1024");
        row("there", "a: 1\nb: 2\n", renameTo("a", "b"), "already an entry");
        row("complex key", "? [a]\n: 1\n", renameTo("[a]", "b"), "keeps its name");
        row("named by an alias", "a: &x k\n*x : 1\n", setTo("a", text("l")), "by its alias at line 2");
        row("used anchor", "a: &x 1\nb: *x\n", drop("a"), "is used at line 2");
        row("merged", "a: &x {k: 1}\nb:\n  <<: *x\n", setTo("b.<<", integer(2)), "merged");
        row("tag", "a: !x 1\n", setTo("a", integer(2)), "says what it is");
        row("comments in a list", "a:\n- x # c\n", setTo("a", integer(2)), "comments");
        row("comment of a block", "a: | # c\n  x\n", setTo("a", list({})), "\"# c\" on its first line");
        row("line of a directive", ">\n a\n%b\n", setTo("", number(3)), "what is around it");
        row("list above a comment", "a:\n- x\n  # c\n", setTo("a", list({"x\ny"})), "what is around it");
        row("beside a comment", "{ ? #c\n}\n", setTo("%00", integer(5)), "what is around it");
        row("nothing to merge", "a:\n  <<:\n", setTo("a.<<", list({"x"})), "what is around it");
        row("below a type tag", "# @type date\na: [x]\n", setTo("a", text("2024-01-02")),
            "what is around it");
        row("behind an anchor", "a: &x\nb\n", setTo("a", {Type::ByteArray, std::string("c")}),
            "what is around it");
        row("not UTF-8", "a: 1\n", setTo("a", text("\xFF")), "not valid UTF-8");
        row("one of two documents", "a: 1\n---\nb: 2\n", drop("0"), "of two documents none");
        row("before directives", "%YAML 1.2\n---\na: 1\n---\nb: 2\n", addElement("0", {{"c", integer(3)}}),
            "would take them over");
        row("behind a tab", "a:\n \tb\n", setTo("a", text("no")), "indented by a tab");
        row("anchor of a list", "l: [&x v, b]\na: *x\n", setTo("l", list({"b"})), "is used at line 2");
        row("only entry of a pair", "[p, a: 1]\n", drop("1.a"), "YAML would still read it there");
        row("lines of a pair", "[a: 1]\n", add("0.b", integer(1)), "can have no other");
    }

    void refuses()
    {
        QFETCH(QByteArray, before);
        QFETCH(Edit, edit);
        QFETCH(QByteArray, error);
        const auto document = makeDocument("yaml");
        QVERIFY(document->parse(before.toStdString()).ok());
        const Outcome outcome = edit(*document);
        QVERIFY2(outcome.error.find(error.toStdString()) != std::string::npos, outcome.error.c_str());
        QCOMPARE(QByteArray::fromStdString(document->getBytes()), before);
    }

    // A document by its values would lose the comments that are in no entry of it.
    void hasCommentsInDocuments()
    {
        const auto document = makeDocument("yaml");
        QVERIFY(document->parse("a: 1\n---\n# of b\nb: 2\n---\nc: '#'\n---\nd: 4\n# end\n").ok());
        QVERIFY(!document->hasComments("0"));
        QVERIFY(document->hasComments("1"));
        QVERIFY(!document->hasComments("2"));
        QVERIFY(document->hasComments("3"));
    }

    void refusesTypesOfOtherHandles()
    {
        const auto document = makeDocument("yaml");
        const Outcome outcome =
            document->parse("%TAG !e! tag:yaml.org,2002:\n---\na: !e!str 5\nb: !e!int 5\n");
        QVERIFY2(outcome.error.find("write \"!!int\"") != std::string::npos, outcome.error.c_str());
        QCOMPARE(outcome.line, std::size_t(4));
    }

    // Scalars of real files, and of one that always is there, become values that are hard to write: one value
    // differs when the file is read again, all bytes around it are what they were, and its former spelling
    // gives the former bytes.
    // With these, an entry is not moved by its values.
    void findsComments_data()
    {
        const auto row = TestSupport::columns<QByteArray, QByteArray, bool>("yaml", "path", "hasSome");
        row("in a list", "a:\n- x # c\n- y\n", "a", true);
        row("in a list in brackets", "a: [x, # c\n  y]\n", "a", true);
        row("of a block", "a: | # c\n  x\n", "a", true);
        row("number sign", "a: ['#', \"#\"]\n", "a", false);
        row("where an alias leads", "a: &x\n- y # c\nb: *x\n", "b", false);
    }

    void findsComments()
    {
        QFETCH(QByteArray, yaml);
        QFETCH(QByteArray, path);
        const auto document = makeDocument("yaml");
        QVERIFY(document->parse(yaml.toStdString()).ok());
        QTEST(document->hasComments(path.toStdString()), "hasSome");
    }

    // After edits anywhere in a file of many entries, each value is found where it is written.
    void findsValuesInALargeFile()
    {
        std::string bytes;
        for (int group = 0; group < 50; ++group) {
            bytes += "g" + std::to_string(group) + ":\n";
            for (int entry = 0; entry < 40; ++entry)
                bytes += "  # above\n  k" + std::to_string(entry) + ": v" + std::to_string(entry) + " # c\n";
            bytes += "  l:\n  - a: 1\n    b: [x, y]\n  - a: 2\n";
        }
        const auto document = makeDocument("yaml");
        QVERIFY(document->parse(bytes).ok());
        QRandomGenerator random(7);
        for (int step = 0; step < 400; ++step) {
            const std::vector<Entry> entries = entriesOf(*document);
            const auto any = [&] { return entries[std::size_t(random.bounded(int(entries.size())))].path; };
            const std::string name = "n" + std::to_string(step);
            const std::vector<Edit> edits{drop(any()), renameTo(any(), name), setTo(any(), text(name)),
                                          add(joinPath(any(), name), integer(step)),
                                          add(joinPath(splitLast(any()).parent, name), text("of\nlines\n"))};
            edits[std::size_t(step) % edits.size()](*document);
            const std::string now = document->getBytes();
            for (int looks = 0; looks < 10; ++looks) {
                const std::string path = any();
                const auto spelling = document->spell(path);
                const auto place = document->locate(path);
                QCOMPARE(place.has_value(), spelling.has_value());
                QVERIFY2(!place || now.substr(place->offset, place->length) == *spelling, path.c_str());
            }
        }
        QVERIFY(document->getBytes() != bytes);
        QCOMPARE(toLines(*document), toLines("yaml", document->getBytes()));
    }

    void takesAListWithCommentsBehindItBack()
    {
        const auto document = makeDocument("yaml");
        QVERIFY(document->parse("k:\n- a\n # c\n- b\nz: 1\n").ok());
        QVERIFY(document->set("k", list({"x"})).ok());
        const std::string bytes = document->getBytes();
        const std::string spelling = document->spell("k").value();
        QVERIFY(document->set("k", list({"y"})).ok());
        QVERIFY(document->respell("k", spelling).ok());
        QCOMPARE(QByteArray::fromStdString(document->getBytes()), QByteArray::fromStdString(bytes));
    }
};

VANTRY_TEST_MAIN(QCoreApplication, YamlEditTest)

#include "yaml_edit_test.moc"
