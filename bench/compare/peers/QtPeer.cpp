// Qt: QVariantMap by way of QJsonDocument, with Qt's own conversions.
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonParseError>
#include <QtCore/QString>
#include <QtCore/QVariantMap>

#include <stdexcept>

#include "Contestant.h"

namespace compare {

namespace {

QVariantMap Parse(const std::u16string& text) {
    const QByteArray utf8 = QStringView(text).toUtf8();
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(utf8, &error);
    if (error.error != QJsonParseError::NoError) {
        throw std::runtime_error("Qt: " + error.errorString().toStdString());
    }
    return document.toVariant().toMap();
}

class QtContestant final : public Contestant {
public:
    std::string GetName() const override { return "Qt"; }
    std::string GetVersion() const override { return qVersion(); }

    void Prepare(const Documents& documents) override {
        m_documents = &documents;
        for (const auto& text : documents.texts) {
            m_maps.push_back(Parse(text));
        }
    }

    void Release() override { m_maps.clear(); }

    std::size_t Write(std::size_t index) override {
        const QByteArray utf8 = QJsonDocument::fromVariant(m_maps[index]).toJson(QJsonDocument::Compact);
        const QString text = QString::fromUtf8(utf8);
        HaveResult();
        return static_cast<std::size_t>(text.size());
    }

    std::size_t Read(std::size_t index) override {
        const QVariantMap map = Parse(m_documents->texts[index]);
        HaveResult();
        return static_cast<std::size_t>(map.size());
    }

private:
    const Documents* m_documents = nullptr;
    std::vector<QVariantMap> m_maps;
};

}  // namespace

extern "C" void MakeContestants(Contestants& contestants) { contestants.push_back(std::make_unique<QtContestant>()); }

}  // namespace compare
