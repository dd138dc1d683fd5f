#pragma once

#include "mainwindow/process.h"

/// State of a run that the window shows nowhere.
struct ProcessState
{
    static int &currentRow(Process &window) { return window.currentRow; }
    static int currentPage(const Process &window) { return window.currentPage; }
    static int pageCount(const Process &window) { return window.pageCount; }
    static int groupIndex(const Process &window) { return window.groupIndex; }
    static int infoQueueIndex(const Process &window) { return window.infoQueueIndex; }
    static QStringList infoQueueFiles(const Process &window) { return window.infoQueueFiles; }
    static QStringList infoQueueRows(const Process &window) { return window.infoQueueRows; }
    static QString &outputFile(Process &window) { return window.outputFile; }
    static QString dataFolderPath(const Process &window) { return window.dataFolderPath; }
    static QStringList &pageTexts(Process &window) { return window.pageTexts; }
    static QStringList pageRanges(const Process &window) { return window.pageRanges; }
    static QStringList rangeTexts(const Process &window) { return window.rangeTexts; }
    static QTimer *previewTimer(const Process &window) { return window.previewTimer; }
    static QList<int> rule(const Process &window)
    {
        return {window.ruleX, window.ruleY, window.ruleWidth, window.ruleHeight};
    }
    static QString ruleText(const Process &window) { return window.ruleText; }
    static const Subtext &pageItem(const Process &window, std::size_t index)
    {
        return window.pageItems.at(index);
    }
};
