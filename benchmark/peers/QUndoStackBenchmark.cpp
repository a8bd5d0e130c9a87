/* Qt's undo framework with commands over a document of Qt's JSON classes */

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <QUndoCommand>
#include <QUndoStack>

#include "Edits.h"

namespace OrrelinEngine { namespace {

/* The names in `/objects/<record>` or `/objects/<record>/<member>` */
struct RecordMember {
    bool operator==(const RecordMember& other) const {
        return record == other.record && member == other.member;
    }

    QString record, member;
};

class Document {
public:
    explicit Document(const std::string& json):
        _root{
            QJsonDocument::fromJson(QByteArray::fromStdString(json)).object()} {
    }

    /* Returns an undefined value if there is none */
    QJsonValue get(const RecordMember& at) const {
        const QJsonValue record =
            _root.constFind("objects")->toObject().value(at.record);
        return at.member.isEmpty() ? record
                                   : record.toObject().value(at.member);
    }

    /* Takes the section out while it's changed, as an object that the root
       shares would be copied as a whole */
    void set(const RecordMember& at, const QJsonValue& value) {
        QJsonObject objects = _root.take("objects").toObject();
        if(at.member.isEmpty())
            put(objects, at.record, value);
        else {
            const auto found = objects.find(at.record);
            QJsonObject record = found.value().toObject();
            put(record, at.member, value);
            found.value() = record;
        }
        _root.insert("objects", objects);
    }

    const QJsonObject& root() const { return _root; }

private:
    static void put(
        QJsonObject& object, const QString& name, const QJsonValue& value) {
        if(value.isUndefined())
            object.remove(name);
        else
            object.insert(name, value);
    }

    QJsonObject _root;
};

class SetValue: public QUndoCommand {
public:
    explicit SetValue(Document& document, const RecordMember& at,
        const QJsonValue& value, bool continuous):
        _document(document),
        _at{at}, _oldValue{document.get(at)}, _newValue{value},
        _continuous{continuous} {}

    void undo() override { _document.set(_at, _oldValue); }
    void redo() override { _document.set(_at, _newValue); }

    int id() const override { return _continuous ? 1 : -1; }
    bool mergeWith(const QUndoCommand* other) override {
        const SetValue& next = *static_cast<const SetValue*>(other);
        if(!(next._at == _at))
            return false;
        _newValue = next._newValue;
        return true;
    }

private:
    Document& _document;
    RecordMember _at;
    QJsonValue _oldValue, _newValue;
    bool _continuous;
};

class QtSystem {
public:
    typedef RecordMember Path;
    static Path path(const std::string& pointer) {
        const QString path = QString::fromStdString(pointer);
        return {path.section('/', 2, 2), path.section('/', 3)};
    }

    typedef QJsonValue Value;
    static Value value(const std::string& json) {
        return QJsonDocument::fromJson(
            QByteArray::fromStdString("[" + json + "]"))
            .array()[0];
    }

    explicit QtSystem(const std::string& json): _document{json} {}

    void push(const Path& path, const Value* value) {
        _stack.push(new SetValue{_document, path,
            value ? *value : QJsonValue{QJsonValue::Undefined}, false});
    }
    void drag(const Path& path, const Value& value) {
        _stack.push(new SetValue{_document, path, value, true});
    }
    void beginGroup() { _stack.beginMacro({}); }
    void commit() { _stack.endMacro(); }
    void undo() { _stack.undo(); }
    void redo() { _stack.redo(); }

    std::string json() const {
        return QJsonDocument{_document.root()}.toJson().toStdString();
    }

private:
    Document _document;
    QUndoStack _stack;
};

const bool registered = registerEdits<QtSystem>("QUndoStack") &&
    registerEditsOfRecords<QtSystem>("QUndoStack");

}}
