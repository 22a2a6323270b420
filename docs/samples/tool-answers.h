// What a font tool in C++ needs beside its own work: answers as arrays, and failures with a text.
#pragma once

#include <windows.h>
// Behind windows.h
#include <ole2.h>

#include <string>
#include <vector>

struct Record {
    long identifier;
    wchar_t character;
    double number;                 // a sample's Distance; of a character how often it was trained
    std::vector<double> features;  // 49, each 0 to 1
};

// The answer of GetSampleData: rows first, row 0 the headings, and Empty when there is no record. Samples
// have 5 columns before the features, characters 4: the identifier and a column for each other field.
inline HRESULT recordTable(const std::vector<Record>& records, ULONG before, VARIANT* answer) {
    VariantInit(answer);
    if (records.empty()) return S_OK;
    SAFEARRAYBOUND bounds[2] = {{static_cast<ULONG>(records.size()) + 1, 0}, {before + 49, 0}};
    SAFEARRAY* table = SafeArrayCreate(VT_VARIANT, 2, bounds);
    VARIANT* cells = nullptr;
    if (!table || FAILED(SafeArrayAccessData(table, reinterpret_cast<void**>(&cells)))) return E_OUTOFMEMORY;
    // The first dimension varies fastest: a column lies in one piece.
    const auto cell = [&](std::size_t row, std::size_t column) -> VARIANT& {
        return cells[column * bounds[0].cElements + row];
    };
    for (std::size_t column = 0; column < bounds[1].cElements; ++column) {
        cell(0, column).vt = VT_BSTR;
        cell(0, column).bstrVal = SysAllocString(L"Heading");
    }
    for (std::size_t i = 0; i < records.size(); ++i) {
        const auto put = [&](std::size_t column, double value) {
            cell(i + 1, column).vt = VT_R8;
            cell(i + 1, column).dblVal = value;
        };
        put(0, records[i].identifier);
        put(1, records[i].character);
        put(2, records[i].number);
        for (std::size_t column = 3; column < before; ++column) put(column, 0);  // numbers that nobody reads
        for (std::size_t feature = 0; feature < records[i].features.size(); ++feature)
            put(before + feature, records[i].features[feature]);
    }
    SafeArrayUnaccessData(table);
    answer->vt = VT_ARRAY | VT_VARIANT;
    answer->parray = table;
    return S_OK;
}

// A list of strings, as fonts and characters are (`dimensions` 1), or a table of one column, as the
// uncommitted samples are (2); Empty when there is none. VBScript reads arrays of VARIANT alone.
inline HRESULT textList(const std::vector<std::wstring>& texts, UINT dimensions, VARIANT* answer) {
    VariantInit(answer);
    if (texts.empty()) return S_OK;
    SAFEARRAYBOUND bounds[2] = {{static_cast<ULONG>(texts.size()), 0}, {1, 0}};
    SAFEARRAY* list = SafeArrayCreate(VT_VARIANT, dimensions, bounds);
    VARIANT* cells = nullptr;
    if (!list || FAILED(SafeArrayAccessData(list, reinterpret_cast<void**>(&cells)))) return E_OUTOFMEMORY;
    for (const std::wstring& text : texts) {
        cells->vt = VT_BSTR;
        cells++->bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    }
    SafeArrayUnaccessData(list);
    answer->vt = VT_ARRAY | VT_VARIANT;
    answer->parray = list;
    return S_OK;
}

// Returned by an operation that fails: the operator reads number and text on the status bar as they are. The
// object answers ISupportErrorInfo::InterfaceSupportsErrorInfo(IID_IFontTool) with S_OK.
inline HRESULT failed(HRESULT code, const wchar_t* description) {
    ICreateErrorInfo* info = nullptr;
    IErrorInfo* readable = nullptr;
    if (SUCCEEDED(CreateErrorInfo(&info))) {
        info->SetSource(const_cast<LPOLESTR>(L"MyTool"));
        info->SetDescription(const_cast<LPOLESTR>(description));
        if (SUCCEEDED(info->QueryInterface(IID_IErrorInfo, reinterpret_cast<void**>(&readable)))) {
            SetErrorInfo(0, readable);
            readable->Release();
        }
        info->Release();
    }
    return code;
}
