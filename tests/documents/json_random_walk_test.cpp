#include "repository/documents/common/ComponentCodec.h"
#include "tests/documents/DocumentWalk.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

#include <QRegularExpression>

#include <limits>

using namespace EntryLines;
using namespace Repository::Documents;

namespace {

// What a json document should hold, kept as simply as can be.
struct Model
{
    enum class Form { Value, Object, Array };

    std::string key;
    Form form = Form::Value;
    std::optional<Value> own;
    std::vector<Model> children;

    bool isText() const { return form == Form::Value && own->type == Type::String; }

    std::string nameOf(std::size_t child) const
    {
        if (form == Form::Array)
            return std::to_string(child);
        const auto end = children.begin() + std::ptrdiff_t(child);
        const auto before =
            std::count_if(children.begin(), end, [end](const Model& other) { return other.key == end->key; });
        return joinNumber(encodeKey(end->key), std::size_t(before) + 1);
    }

    void appendLines(const std::string& path, QStringList& lines) const
    {
        if (!path.empty() || own)
            lines += toLine(Entry{path, own ? *own : Value()});
        for (std::size_t i = 0; i < children.size(); ++i)
            children[i].appendLines(path.empty() ? nameOf(i) : joinPath(path, nameOf(i)), lines);
    }

    QStringList toLines() const
    {
        QStringList lines;
        appendLines({}, lines);
        return lines;
    }

    // An array of which only texts are left is one list.
    void settle()
    {
        const auto isText = [](const Model& child) { return child.isText(); };
        if (form != Form::Array || !std::all_of(children.begin(), children.end(), isText))
            return;
        std::vector<std::string> texts;
        for (const Model& child : children)
            texts.push_back(std::get<std::string>(child.own->data));
        *this = {key, Form::Value, list(std::move(texts)), {}};
    }

    // Whether all would be texts if this child were one.
    bool needs(std::size_t child) const
    {
        const auto others = std::count_if(children.begin(), children.end(),
                                          [](const Model& other) { return !other.isText(); });
        return form == Form::Array && others == 1 && !children[child].isText();
    }
};

// A large document shrinks, or steps would take ever longer.
class JsonWalk : public DocumentWalk
{
public:
    JsonWalk(const std::string& bytes, quint32 seed) : DocumentWalk("json", seed)
    {
        document->parse(bytes);
        root.form = Model::Form::Object;
        document->visit([this](const Entry& entry) { read(entry); });
    }

private:
    Outcome edit() override
    {
        choose();
        const int kind = random.bounded(6);
        const bool large = root.toLines().size() > 100;
        if (kind == 0 || (large && kind < 4))
            return removeChosen();
        return kind < 3 ? setChosen() : insertAny();
    }

    bool agrees(const QStringList& lines) const override { return lines == root.toLines(); }

    // The start texts have arrays with elements only, and no members with numbers for keys.
    void read(const Entry& entry)
    {
        Model* node = &root;
        const auto components = splitPath(entry.path);
        for (std::size_t i = 0; components && i + 1 < components->size(); ++i) {
            auto child = node->children.begin();
            while (node->nameOf(std::size_t(child - node->children.begin())) != (*components)[i])
                ++child;
            node = &*child;
        }
        const bool group = entry.value.type == Type::Group;
        if (components) {
            const std::string_view name = components->back();
            node->form =
                name == "0" || node->form == Model::Form::Array ? Model::Form::Array : Model::Form::Object;
            node->children.push_back({*decodeKey(splitNumber(name).name), Model::Form::Value, {}, {}});
            node = &node->children.back();
            node->form = group ? Model::Form::Object : Model::Form::Value;
        }
        if (!group)
            node->own = entry.value;
    }

    // Any node: the way to it is kept, so that its parents are at hand.
    void choose()
    {
        way = {&root};
        path.clear();
        index = 0;
        while (!way.back()->children.empty() && random.bounded(4) != 0) {
            Model& parent = *way.back();
            index = std::size_t(random.bounded(int(parent.children.size())));
            path = path.empty() ? parent.nameOf(index) : joinPath(path, parent.nameOf(index));
            way.push_back(&parent.children[index]);
        }
    }

    Model& chosen() { return *way.back(); }
    Model& parent() { return *way[way.size() - 2]; }

    Outcome removeChosen()
    {
        const Outcome outcome = expect(remove(path), way.size() > 1);
        if (outcome.ok() && !wrong) {
            parent().children.erase(parent().children.begin() + std::ptrdiff_t(index));
            parent().settle();
        }
        return outcome;
    }

    // Whether there is a slash beside texts.
    static bool hasComment(const std::string& spelling)
    {
        static const QRegularExpression text(QStringLiteral("\"(\\\\.|[^\"\\\\])*\""));
        return QString::fromStdString(spelling).remove(text).contains(QLatin1Char('/'));
    }

    Outcome setChosen()
    {
        const Value value = anyValue();
        const bool text = value.type == Type::String && chosen().form == Model::Form::Value;
        const bool losesComments = chosen().own && chosen().own->type == Type::StringList &&
                                   value.type != Type::StringList && hasComment(*document->spell(path));
        const bool allowed =
            chosen().own && !losesComments && !(text && way.size() > 1 && parent().needs(index));
        const Outcome outcome = expect(set(path, value), allowed);
        if (!outcome.ok() || wrong)
            return outcome;
        if (chosen().own->type == Type::StringList || random.bounded(4) != 0) {
            chosen().own = value;
            return outcome;
        }
        // The old value gives the old text again, however it was spelled.
        expect(document->set(path, *chosen().own), true);
        if (document->getBytes() != before)
            wrong = "setting the old value leaves a trace";
        return outcome;
    }

    Outcome insertAny()
    {
        Model inserted;
        if (random.bounded(6) == 0)
            inserted.form = Model::Form::Object;
        else
            inserted.own = anyValue();
        const Value value = inserted.own ? *inserted.own : Value();
        if (random.bounded(8) == 0)
            return insertOwn(value);
        inserted.key = anyKey();
        Model& target = chosen();
        const bool isInArray = target.form == Model::Form::Array;
        const auto same =
            std::count_if(target.children.begin(), target.children.end(),
                          [&inserted](const Model& child) { return child.key == inserted.key; });
        const std::string name = isInArray ? std::to_string(target.children.size())
                                           : joinNumber(encodeKey(inserted.key), std::size_t(same) + 1);
        const std::string top = path.empty() ? name : joinPath(path, name);
        std::string inside = top;
        if (random.bounded(4) == 0) {
            const std::string key = anyKey();
            inside = joinPath(inside, encodeKey(inserted.key));
            inserted = {key, Model::Form::Object, {}, {inserted}};
            inserted.key = inserted.children[0].key;
        }
        const Outcome outcome = expect(insert(inside, value), isInArray || same == 0);
        if (!outcome.ok())
            return outcome;
        const bool wasFilled = !target.children.empty();
        target.form = target.form == Model::Form::Array ? target.form : Model::Form::Object;
        if (!wasFilled || random.bounded(4) != 0) {
            target.children.push_back(std::move(inserted));
            return outcome;
        }
        // What was inserted and is removed again leaves no trace.
        expect(document->remove(top), true);
        if (document->getBytes() != before)
            wrong = "removing what was inserted leaves a trace";
        return outcome;
    }

    Outcome insertOwn(const Value& value)
    {
        const bool isGroup = value.type == Type::Group;
        const bool allowed =
            isGroup ? before.empty() && path.empty() : !chosen().own && chosen().form == Model::Form::Object;
        const Outcome outcome = expect(insert(path, value), allowed);
        if (outcome.ok() && !isGroup)
            chosen().own = value;
        return outcome;
    }

    Outcome expect(const Outcome& outcome, bool allowed)
    {
        if (outcome.ok() != allowed)
            wrong = allowed ? "an edit was refused" : "an edit was not refused";
        return outcome;
    }

    std::string anyText()
    {
        static const std::vector<std::string> pieces{"a",
                                                     "\"",
                                                     "\\",
                                                     "//",
                                                     "/*",
                                                     "*/",
                                                     "\n",
                                                     "\r\n",
                                                     "\t",
                                                     "{",
                                                     "]",
                                                     ",",
                                                     " ",
                                                     "\xC3\xBC",
                                                     "\xF0\x9F\x98\x80",
                                                     std::string(1, '\0'),
                                                     "\x1F",
                                                     "\x7F",
                                                     "\\u0041",
                                                     "12"};
        std::string text;
        for (int i = random.bounded(5); i > 0; --i)
            text += pick(pieces);
        return text;
    }

    std::string anyKey()
    {
        static const std::vector<std::string> keys{"a", "b", "c", "a.b", "", "k[2]", "#c", "\"", "\xC3\xBC"};
        return pick(keys);
    }

    Value anyValue()
    {
        switch (random.bounded(8)) {
        case 0:
            return null();
        case 1:
            return boolean(random.bounded(2) == 0);
        case 2:
            return integer(qint64(random.generate64()) >> random.bounded(64));
        case 3:
            return {Type::Unsigned, std::uint64_t(random.generate64() | 1ULL << 63)};
        case 4:
            return number((random.generateDouble() - 0.5) * std::pow(10.0, random.bounded(-300, 300)));
        case 5: {
            std::vector<std::string> texts(std::size_t(random.bounded(5)));
            std::generate(texts.begin(), texts.end(), [this] { return anyText(); });
            return list(texts);
        }
        default:
            return text(anyText());
        }
    }

    Model root;
    std::vector<Model*> way; // from the root to the chosen node; owned by the root
    std::string path;
    std::size_t index = 0;
};

} // namespace

// A document and a trivial model go the same random way; after every step they hold the same, and so does the
// text when it is read afresh. VANTRY_WALK_STEPS makes the way longer.
class JsonRandomWalkTest : public QObject
{
    Q_OBJECT

private slots:
    void walks_data()
    {
        const auto row = TestSupport::columns<QByteArray>("bytes");
        const QByteArray pretty = "{\n"
                                  "    \"a\": 1,\n"
                                  "    \"b\": {\n"
                                  "        \"list\": [\n"
                                  "            \"x\",\n"
                                  "            \"y\"\n"
                                  "        ],\n"
                                  "        \"mixed\": [1, \"x\", {\"z\": null}],\n"
                                  "        \"empty\": {}\n"
                                  "    },\n"
                                  "    \"a\": 2.50,\n"
                                  "    \"c\": {\n"
                                  "        \"#value\": \"own\",\n"
                                  "        \"d\": true\n"
                                  "    }\n"
                                  "}\n";
        const QByteArray commented =
            "// head\r\n{ // top\r\n\t\"a\": 1, // one\r\n\t/* two\r\n\tlines */\r\n"
            "\t\"b\": [ /* x */ 1 /* y */, \"z\", // z\r\n\t], /* b */ \"c\": {}, // c\r\n"
            "\t\"d\": [ \"p\", // p\r\n\t\t/* q */ \"q\"\r\n\t\t// end\r\n\t]\r\n"
            "\t// last\r\n} // tail";
        row("nothing", QByteArray());
        row("empty object", "{}");
        row("four blanks", pretty);
        row("two blanks", QByteArray(pretty).replace("    ", "  "));
        row("tabs and CRLF", QByteArray(pretty).replace("    ", "\t").replace("\n", "\r\n"));
        row("CR", QByteArray(pretty).replace("\n", "\r"));
        row("minified", QByteArray(pretty).replace("\n", "").replace(" ", ""));
        row("one line", QByteArray(pretty).replace("\n", " ").replace("    ", ""));
        row("comma first", "{ \"a\": 1\n, \"b\": [ 1\n  , 2\n  ]\n, \"c\": \"x\"\n}\n");
        row("comments", commented);
        QByteArray members;
        for (const char* key : {"a", "b", "c", "d", "e", "f", "a", "b", "a", "g", "h", "i"})
            members.append('"').append(key).append("\": 1, ");
        row("many children", "{" + members + "\"z\": [1, 2, \"x\", \"x\", \"x\", \"x\", 7, 8, 9, 10]}");
    }

    void walks()
    {
        QFETCH(QByteArray, bytes);
        const int steps = std::max(300, qEnvironmentVariableIntValue("VANTRY_WALK_STEPS"));
        const auto [first, end] = walkSeeds(5);
        for (quint32 seed = first; seed < end; ++seed) {
            JsonWalk walk(bytes.toStdString(), seed);
            for (int step = 0; step < steps; ++step) {
                const QString fault = walk.step();
                QVERIFY2(fault.isEmpty(),
                         qPrintable(QStringLiteral("seed %1, step %2: %3").arg(seed).arg(step).arg(fault)));
            }
        }
    }
};

VANTRY_TEST_MAIN(QCoreApplication, JsonRandomWalkTest)

#include "json_random_walk_test.moc"
#include "repository/documents/Formats.h"
