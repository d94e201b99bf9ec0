// fuzz_ini.cpp - the text of an ini file and, behind a line "%%", changes to make to it. The file
// is compared with a second reading of the same lines, before and after each rewrite.
#include "fuzz_support.h"

#include <algorithm>

#include "psstream/psinifile.h"

namespace {

constexpr char iniName[] = "f.ini";
constexpr char bareKey[] = "~~~";

struct Value {
    std::string key;
    std::string value;
    std::string comment;
};

struct Section {
    std::string name;
    std::vector<Value> values;
};

std::string trimmed(std::string const& text) {
    std::size_t const first = text.find_first_not_of(" \t\r");
    if (first == std::string::npos) {
        return "";
    }
    return text.substr(first, text.find_last_not_of(" \t") + 1 - first);
}

class Model {
public:
    explicit Model(std::string const& text) {
        Section* current = nullptr;
        for (std::string const& whole : linesOf(text)) {
            std::string const line = trimmed(whole.substr(0, whole.find("//")));
            std::size_t const opening = line.find('[');
            std::size_t const closing = line.find(']', opening);
            if (opening != std::string::npos && closing != std::string::npos) {
                current = &section(trimmed(line.substr(opening + 1, closing - opening - 1)));
            } else if (!line.empty() && current != nullptr) {
                std::size_t const sign = line.find('=');
                std::string const key = trimmed(line.substr(0, sign));
                if (find(*current, key) == nullptr) {
                    current->values.push_back(
                        {key, sign == std::string::npos ? bareKey : trimmed(line.substr(sign + 1)),
                         ""});
                }
            }
        }
    }

    Section& section(std::string const& name) {
        auto const place = std::ranges::find(sections, name, &Section::name);
        return place != sections.end() ? *place : sections.emplace_back(Section{name, {}});
    }

    static Value* find(Section& section, std::string const& key) {
        auto const place = std::ranges::find(section.values, key, &Value::key);
        return place != section.values.end() ? &*place : nullptr;
    }

    std::string text() const {
        std::string all;
        for (Section const& section : sections) {
            all += "\n[" + section.name + "]\n";
            for (Value const& item : section.values) {
                all += item.key;
                if (item.value != bareKey) {
                    all += "=" + item.value + (item.comment.empty() ? "" : "\t// " + item.comment);
                }
                all += "\n";
            }
        }
        return all;
    }

    // A bare key without a name is an empty line, which nobody reads.
    void forgetNameless() {
        for (Section& item : sections) {
            std::erase_if(item.values, [](Value const& value) {
                return value.key.empty() && value.value == bareKey;
            });
        }
    }

    std::vector<Section> sections;
};

void checkSame(psIniFile& file, Model& model, std::string const& text) {
    for (Section& section : model.sections) {
        psValues const* const values = file.getSectionValues(section.name.c_str());
        FUZZ_CHECK(values != nullptr && file.sectionExist(section.name.c_str()), text);
        FUZZ_CHECK(values->size() == static_cast<int>(section.values.size()), text);
        auto wanted = section.values.begin();
        for (psValueItem const* item : *values) {
            FUZZ_CHECK(item->key == wanted->key.c_str(), text);
            FUZZ_CHECK(item->value == wanted->value.c_str(), text);
            FUZZ_CHECK(file.valueExist(section.name.c_str(), item->key), text);
            FUZZ_CHECK(file.read(section.name.c_str(), item->key, "?") == item->value, text);
            ++wanted;
        }
    }
}

// "w section|key|value|comment", "b section|key", "s section", "d section|key", "e section".
void change(psIniFile& file, Model& model, std::string const& line) {
    std::string name;
    std::string key;
    std::string value;
    std::string comment;
    std::size_t start = line.size() > 2 ? 2 : line.size();
    for (std::string* const part : {&name, &key, &value, &comment}) {
        std::size_t const end = std::min(line.find('|', start), line.size());
        *part = line.substr(start, end - start);
        start = std::min(end + 1, line.size());
    }
    char const* const section = name.c_str();
    bool const present = file.sectionExist(section);
    switch (line[0]) {
    case 'w':
    case 'b': {
        bool const bare = line[0] == 'b';
        bare ? file.write(section, key.c_str())
             : file.write(section, key.c_str(), value.c_str(), comment.c_str());
        Section& target = model.section(name);
        if (trimmed(key).empty()) {
            return;
        }
        Value* const old = Model::find(target, trimmed(key));
        if (old != nullptr) {
            old->value = bare ? bareKey : value;
        } else {
            target.values.push_back({trimmed(key), bare ? bareKey : value, bare ? "" : comment});
        }
        return;
    }
    case 's':
        file.write(section);
        model.section(name);
        return;
    case 'd':
        file.deleteKey(section, key.c_str());
        FUZZ_CHECK(!file.valueExist(section, key.c_str()), line);
        if (present) {
            std::erase_if(model.section(name).values,
                          [&](Value const& item) { return item.key == key; });
        }
        return;
    case 'e':
        file.eraseSection(section);
        FUZZ_CHECK(!file.sectionExist(section), line);
        std::erase_if(model.sections, [&](Section const& item) { return item.name == name; });
        return;
    default:
        return;
    }
}

} // namespace

std::size_t const mostBytes = 1 << 15;

void tryInput(std::string const& input) {
    std::string text = input;
    std::string changes;
    std::size_t const mark = text.find("\n%%\n");
    if (mark != std::string::npos) {
        changes = text.substr(mark + 4);
        text.resize(mark + 1);
    }
    writeFile(iniName, text);
    std::string kept = text;
    std::erase(kept, '\0');
    std::erase(changes, '\0');
    // So many zero bytes end the reading, wherever they begin to fill a piece of a line.
    if (text.find(std::string(511, '\0')) != std::string::npos) {
        return;
    }
    Model model(kept);

    { // for reading: the file stays as it is, whatever changes in memory
        psIniFile file;
        FUZZ_CHECK(file.open(iniName, false), text);
        checkSame(file, model, text);
        file.write("new", "key", "value", "");
    }
    FUZZ_CHECK(readFile(iniName) == text, text);

    { // rewritten, it reads back to the same
        psIniFile file;
        FUZZ_CHECK(file.open(iniName, true), text);
        checkSame(file, model, text);
        file.updateFile();
        FUZZ_CHECK(readFile(iniName) == model.text(), text);
        model.forgetNameless();
        FUZZ_CHECK(file.open(iniName, true), text);
        checkSame(file, model, text);
    }
    FUZZ_CHECK(readFile(iniName) == model.text(), text);

    { // changed, it holds what the changes say
        psIniFile file;
        FUZZ_CHECK(file.open(iniName, true), text);
        for (std::string const& line : linesOf(changes)) {
            change(file, model, line);
        }
        checkSame(file, model, text);
    }
    FUZZ_CHECK(readFile(iniName) == model.text(), text);
}
