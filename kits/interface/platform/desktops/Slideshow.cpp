// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/Slideshow.h"

#include <QXmlStreamReader>

#include <chrono>
#include <cmath>
#include <utility>
#include <vector>

namespace kits {

namespace {

/// A slide, or a transition from one picture to another.
struct Slide {
    double seconds = 0;
    QString first;
    QString last; ///< of a transition
};

struct Slideshow {
    double start = 0; ///< seconds since 1970, local time
    std::vector<Slide> slides;
};

/// Reads the path in an element that holds one, or several for other sizes, of which the first one counts.
QString PathIn(QXmlStreamReader& reader)
{
    QString only;
    QString first;
    for (auto token = reader.readNext(); !reader.atEnd() && token != QXmlStreamReader::EndElement;
         token = reader.readNext()) {
        if (token == QXmlStreamReader::Characters)
            only += reader.text();
        else if (token == QXmlStreamReader::StartElement) {
            const QString path = reader.readElementText(QXmlStreamReader::SkipChildElements).trimmed();
            first = first.isEmpty() ? path : first;
        }
    }
    return first.isEmpty() ? only.trimmed() : first;
}

Slide ReadSlide(QXmlStreamReader& reader)
{
    Slide slide;
    while (reader.readNextStartElement())
        if (reader.name() == QLatin1String("duration"))
            slide.seconds = reader.readElementText().toDouble();
        else if (reader.name() == QLatin1String("file") || reader.name() == QLatin1String("from"))
            slide.first = PathIn(reader);
        else if (reader.name() == QLatin1String("to"))
            slide.last = PathIn(reader);
        else
            reader.skipCurrentElement();
    return slide;
}

/// Returns seconds since 1970; 0 for an impossible moment.
double ReadStart(QXmlStreamReader& reader)
{
    int year = 1970;
    int month = 1;
    int day = 1;
    int hour = 0;
    int minute = 0;
    int second = 0;
    const std::pair<const char*, int*> parts[] = {{"year", &year}, {"month", &month},   {"day", &day},
                                                  {"hour", &hour}, {"minute", &minute}, {"second", &second}};
    while (reader.readNextStartElement()) {
        const QString name = reader.name().toString();
        const int value = reader.readElementText().toInt();
        for (const auto& [known, part] : parts)
            if (name == QLatin1String(known))
                *part = value;
    }
    namespace chrono = std::chrono;
    const chrono::year_month_day date(chrono::year(year), chrono::month(static_cast<unsigned>(month)),
                                      chrono::day(static_cast<unsigned>(day)));
    if (!date.ok())
        return 0;
    return static_cast<double>(chrono::sys_days(date).time_since_epoch().count()) * 86400 + hour * 3600.0 +
           minute * 60.0 + second;
}

Slideshow Read(const std::string& text)
{
    Slideshow show;
    QXmlStreamReader reader(QByteArray::fromStdString(text));
    if (!reader.readNextStartElement() || reader.name() != QLatin1String("background"))
        return show;
    while (reader.readNextStartElement()) {
        if (reader.name() == QLatin1String("starttime"))
            show.start = ReadStart(reader);
        else if (reader.name() == QLatin1String("static") || reader.name() == QLatin1String("transition")) {
            const Slide slide = ReadSlide(reader);
            if (slide.first.startsWith(u'/') && slide.seconds > 0 && std::isfinite(slide.seconds))
                show.slides.push_back(slide);
        } else
            reader.skipCurrentElement();
    }
    return show;
}

} // namespace

std::string SlideAt(const std::string& text, int64 when)
{
    const Slideshow show = Read(text);
    double whole = 0;
    for (const Slide& slide : show.slides)
        whole += slide.seconds;
    if (show.slides.empty() || !std::isfinite(whole))
        return "";
    double into = std::fmod(static_cast<double>(when) - show.start, whole);
    if (into < 0)
        into += whole;
    for (const Slide& slide : show.slides) {
        if (into < slide.seconds) {
            const bool isLast = slide.last.startsWith(u'/') && into > slide.seconds / 2;
            return (isLast ? slide.last : slide.first).toStdString();
        }
        into -= slide.seconds;
    }
    return show.slides.back().first.toStdString();
}

} // namespace kits
