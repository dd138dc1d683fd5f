#include "export_here.h"

#include "tools/pagexport/pagexport.h"

#include <QTemporaryFile>

#include <cstdio>
#include <vector>

#include <unistd.h>

namespace quorlin::test {

namespace {

#ifndef QUORLIN_SANDBOX

/// Leads what is written to @p descriptor into a file until it is destroyed.
class Diversion
{
public:
    Diversion(int descriptor, std::FILE *stream)
        : m_descriptor(descriptor), m_stream(stream), m_former(dup(descriptor))
    {
        std::fflush(m_stream);
        m_isOpen = m_file.open() && dup2(m_file.handle(), m_descriptor) == m_descriptor;
    }
    ~Diversion() { end(); }
    Diversion(const Diversion &) = delete;
    Diversion &operator=(const Diversion &) = delete;

    bool isOpen() const { return m_isOpen; }
    /// What was written.
    QByteArray end()
    {
        if (m_former >= 0) {
            std::fflush(m_stream);
            dup2(m_former, m_descriptor);
            close(m_former);
            m_former = -1;
        }
        m_file.seek(0);
        return m_file.readAll();
    }

private:
    QTemporaryFile m_file;
    int m_descriptor;
    std::FILE *m_stream;
    int m_former;
    bool m_isOpen = false;
};

#endif

} // namespace

int ExportHere::call(const QStringList &arguments)
{
#ifdef QUORLIN_SANDBOX
    return ExportRun::call(arguments); // it would shut the test in
#else
    QByteArrayList words{"pagexport"};
    for (const QString &argument : arguments) {
        words.append(QFile::encodeName(argument));
    }
    std::vector<const char *> pointers;
    for (const QByteArray &word : words) {
        pointers.push_back(word.constData());
    }
    pointers.push_back(nullptr);
    Diversion output(STDOUT_FILENO, stdout);
    Diversion errors(STDERR_FILENO, stderr);
    if (!output.isOpen() || !errors.isOpen()) {
        return -1;
    }
    const int status = tools::runPageExport(static_cast<int>(words.size()), pointers.data());
    setWritten(output.end(), errors.end());
    return status;
#endif
}

} // namespace quorlin::test
