#include "report/report.h"

#include "record/maskjson.h"
#include "report/htmltext.h"
#include "report/reportassets.h"
#include "report/reportsections.h"
#include "report/sketchsection.h"

#include <dotweave/version.h>

#include <nlohmann/json.hpp>

namespace dotweave {

namespace {

struct SHeading {
    const char* id;
    const char* text;
};

std::string Section(const SHeading& heading, const std::string& html)
{
    const std::string id = heading.id;
    return "<section id='" + id + "' aria-labelledby='" + id + "-heading'>\n<h2 id='" + id + "-heading'>" +
           Html_Escape(heading.text) + "</h2>\n" + html + "</section>\n";
}

constexpr SHeading HEADINGS[] = {
    {"record", "Record and geometry"},
    {"cut-table", "Cut table"},
    {"masks", "Masks"},
    {"sheet", "Ideal sheet"},
    {"sketch", "Try the errors of a press"},
    {"figures", "Figures under errors of the advance"},
    {"dead-row", "A dead nozzle row"},
    {"duty", "Work of the nozzle rows"},
    {"spectrum", "Spectrum"},
};

std::string Contents()
{
    std::string html = "<nav aria-label='Contents'><ul>\n";
    for (const SHeading& heading : HEADINGS)
        html += std::string("<li><a href='#") + heading.id + "'>" + Html_Escape(heading.text) + "</a></li>\n";
    return html + "</ul></nav>\n";
}

/// JSON that cannot end the script element that it is in.
std::string Data_Html(const nlohmann::ordered_json& data)
{
    std::string html = "<script type='application/json' id='report-data'>";
    for (const char c : data.dump(-1, ' ', true))
        html += c == '<' ? std::string("\\u003c") : std::string{c};
    return html + "</script>\n";
}

/// The page may load nothing but what it brings.
constexpr char POLICY[] = "default-src 'none'; img-src data:; style-src 'unsafe-inline'; script-src "
                          "'unsafe-inline'; base-uri 'none'; form-action 'none'";

std::string Head_Html(const std::string& title)
{
    return "<!DOCTYPE html>\n<html lang='en'>\n<head>\n<meta charset='utf-8'>\n"
           "<meta http-equiv='Content-Security-Policy' content='" +
           Html_Escape(POLICY) +
           "'>\n<meta name='viewport' content='width=device-width, initial-scale=1'>\n"
           "<meta name='color-scheme' content='light dark'>\n<link rel='icon' href='data:,'>\n"
           "<title>Dotweave report: " +
           Html_Escape(title) + "</title>\n<style>\n" + ReportAsset_Style() + "</style>\n</head>\n";
}

} // namespace

std::string Report_Html(CMaskData_Base& mask, const SReportOptions& options,
                        const std::function<void()>& partDone)
{
    const auto part = [&partDone](auto made) {
        if (partDone)
            partDone();
        return made;
    };
    const std::string title = Report_ModeText(mask);
    const std::string bodies[] = {
        part(RecordSection_Html(mask)),
        part(CutTableSection_Html(mask)),
        part(MaskSection_Html(mask)),
        part(SheetSection_Html(mask)),
        part(SketchSection_Html(mask)),
        part(FigureSection_Html(mask, options)),
        part(DeadRowSection_Html(mask, options)),
        part(DutySection_Html(mask)),
        part(SpectrumSection_Html(mask)),
    };
    static_assert(std::size(bodies) == std::size(HEADINGS));
    static_assert(std::size(bodies) + 2 == REPORT_PART_COUNT);
    std::string html = Head_Html(title) + "<body>\n<header>\n<h1>Dotweave report</h1>\n<p>" +
                       Html_Escape(title) + ". Made by Dotweave " + dotweave_version() + ".</p>\n" +
                       Contents() + "</header>\n<main>\n";
    for (std::size_t i = 0; i < std::size(bodies); ++i)
        html += Section(HEADINGS[i], bodies[i]);
    const nlohmann::ordered_json data = {
        {"mask", Mask_Json(mask, {})},
        {"masks", part(MaskSection_Data(mask))},
        {"sketch", part(SketchSection_Data(mask, options))},
    };
    return html + "</main>\n<footer><p>Dotweave " + dotweave_version() +
           ". This page is complete: it loads nothing.</p></footer>\n" + Data_Html(data) +
           "<script type='module'>\n" + ReportAsset_Script() + "</script>\n</body>\n</html>\n";
}

} // namespace dotweave
