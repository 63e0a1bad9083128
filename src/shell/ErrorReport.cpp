#include "shell/ErrorReport.h"

#include "core/LanguageValues.h"
#include "platform/EventLog.h"
#include "platform/MessageBoxes.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"
#include "resources/TextId.h"

#include <new>

void ReportError(Application& app, const std::wstring& procedure, std::int32_t number, const std::wstring& description,
                 std::int16_t line) {
    const std::wstring message = app.Text(TextId::ReportNumber) + std::to_wstring(number) + L" (" + description + L")" +
                                 app.Text(TextId::ReportProcedure) + procedure + app.Text(TextId::ReportLine) +
                                 std::to_wstring(line) + L"\r\n\r\n" + app.Text(TextId::ReportSupport);
    app.machine.eventLog->WriteError(message);
    app.machine.messageBoxes->Show(message, app.Text(TextId::ReportTitle), box::Critical);
}

void ReportCurrentException(Application& app, const std::wstring& procedure) {
    try {
        throw;
    } catch (const RuntimeError& error) {
        ReportError(app, procedure, error.Number(), error.Description());
    } catch (const std::bad_alloc&) {
        const auto number = static_cast<std::int32_t>(ErrorNumber::OutOfMemory);
        ReportError(app, procedure, number, DescriptionOf(number));
    } catch (const std::exception& error) {
        ReportError(app, procedure, static_cast<std::int32_t>(ErrorNumber::InvalidCall), FromAnsi(error.what()));
    } catch (...) {
        const auto number = static_cast<std::int32_t>(ErrorNumber::InvalidCall);
        ReportError(app, procedure, number, DescriptionOf(number));
    }
}

void TellCurrentException(Application& app, const wchar_t* procedure) {
    try {
        ReportCurrentException(app, procedure);
    } catch (const std::bad_alloc&) {
        const LanguageValues& language = *app.language;
        if (language.memoryReport.empty()) throw;
        app.machine.messageBoxes->Show(language.memoryReport, language.memoryReportTitle, box::Critical);
    }
}

void PrepareMemoryReport(Application& app) {
    const auto number = static_cast<std::int32_t>(ErrorNumber::OutOfMemory);
    app.language->memoryReport = app.Text(TextId::ReportNumber) + std::to_wstring(number) + L" (" +
                                 DescriptionOf(number) + L")\r\n\r\n" + app.Text(TextId::ReportSupport);
    app.language->memoryReportTitle = app.Text(TextId::ReportTitle);
}
