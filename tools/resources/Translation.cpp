// SPDX-License-Identifier: MIT
#include "tools/resources/Translation.h"

#include "kits/application/Message.h"

#include <QXmlStreamReader>

bool TranslationFromTs(std::string_view ts, BMessage* message, std::string* error)
{
    message->MakeEmpty();
    QXmlStreamReader reader(QByteArray(ts.data(), static_cast<qsizetype>(ts.size())));
    QString source;
    QString text;
    bool isUsed = false;
    while (!reader.atEnd()) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        if (token == QXmlStreamReader::StartElement && reader.name() == u"message") {
            source.clear();
            text.clear();
            isUsed = false;
        } else if (token == QXmlStreamReader::StartElement && reader.name() == u"source") {
            source = reader.readElementText();
        } else if (token == QXmlStreamReader::StartElement && reader.name() == u"translation") {
            isUsed = reader.attributes().value("type").isEmpty();
            text = reader.readElementText();
        } else if (token == QXmlStreamReader::EndElement && reader.name() == u"message") {
            if (isUsed && !source.isEmpty() && !text.isEmpty()) {
                message->AddString("source", source.toStdString());
                message->AddString("text", text.toStdString());
            }
        }
    }
    if (reader.hasError())
        *error = "line " + std::to_string(reader.lineNumber()) + ": " + reader.errorString().toStdString();
    return !reader.hasError();
}
