// What a font tool in C++ needs beside its own work: answers as arrays, and failures with a text.
#pragma once

#include <windows.h>
// Behind windows.h
#include <ole2.h>

#include <string>
#include <vector>

struct Record {
    long identifier;
    char character;
    double distance;               // or the trained count, for character records
    std::vector<double> features;  // 49, each 0 to 1
};

// The answer of GetSampleData: rows first, row 0 the headings, and Empty when there is no record.
inline HRESULT recordTable(const std::vector<Record>& records, VARIANT* answer) {
    VariantInit(answer);
    if (records.empty()) return S_OK;
    SAFEARRAYBOUND bounds[2] = {{static_cast<ULONG>(records.size()) + 1, 0}, {5 + 49, 0}};
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
        put(2, records[i].distance);
        for (std::size_t feature = 0; feature < records[i].features.size(); ++feature)
            put(5 + feature, records[i].features[feature]);
    }
    SafeArrayUnaccessData(table);
    answer->vt = VT_ARRAY | VT_VARIANT;
    answer->parray = table;
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
