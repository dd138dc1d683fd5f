# quorlin_precompile(TARGET KIND) reads the headers that nearly every source of TARGET includes once
# for all of them. KIND is "tool", "core", "window", "test" or "window_test". It shortens builds only:
# a source still includes what it uses, and the debug preset, which reads each on its own, shows that.
set(quorlin_tool_headers
    <algorithm> <array> <charconv> <cstdint> <cstring> <functional> <memory> <optional> <string>
    <string_view> <unordered_map> <utility> <vector>)
set(quorlin_core_headers
    <algorithm> <array> <functional> <memory> <optional> <utility>
    <QByteArray> <QDir> <QFile> <QFileInfo> <QJsonArray> <QJsonDocument> <QJsonObject> <QList>
    <QObject> <QPoint> <QProcess> <QRegularExpression> <QSet> <QSettings> <QString> <QStringList>)
set(quorlin_window_headers
    ${quorlin_core_headers} <QApplication> <QDialog> <QLabel> <QPushButton> <QTableWidget>)
set(quorlin_test_headers ${quorlin_core_headers} <QTemporaryDir> <QTest>)
set(quorlin_window_test_headers ${quorlin_window_headers} <QTemporaryDir> <QTest>)

function(quorlin_precompile target kind)
    target_precompile_headers(${target} PRIVATE ${quorlin_${kind}_headers})
endfunction()
