// Runs the program with documents.

#include "ProgramTest.h"

namespace {

using ZORHostProgramDocumentsTest = ProgramTest;

TEST_F(ZORHostProgramDocumentsTest, ScriptsOpenImportSaveAndCloseDocuments)
{
    const QString document = GetPath("wing & %1.ZORCont");
    EXPECT_EQ(0, RunScript("in ZORHostMainWindow\n"
                           "expect modified is no\n"
                           "answer file ${PART}\n"
                           "trigger Open\n"
                           "expect geometries is 1\n"
                           "expect modified is no\n"
                           "answer file ${PART}\n"
                           "trigger Import\n"
                           "expect geometries is 2\n"
                           "expect modified is yes\n"
                           "expect title is \"Untitled* - Zorvane Host\"\n"
                           "answer file ${DOCUMENT}\n"
                           "trigger \"Save As\"\n"
                           "expect document is ${DOCUMENT}\n"
                           "expect modified is no\n"
                           "answer file ${COPY}\n" // the file that the dialog proposes exists
                           "trigger \"Save a Copy\"\n"
                           "expect document is ${DOCUMENT}\n"
                           "expect same ${DOCUMENT} ${COPY} is yes\n"
                           "answer file ${COPY}.ZORCont\n"
                           "trigger \"Save As\"\n"
                           "expect document is ${COPY}.ZORCont\n"
                           "trigger Close\n"
                           "expect document is \"\"\n"
                           "expect geometries is 0\n"
                           "trigger _Recent_2\n"
                           "expect document is ${DOCUMENT}\n"
                           "trigger Save\n"
                           "trigger New\n"
                           "expect geometries is 0\n",
                           {"--define", "PART=" + WriteTetrahedron("part.stl"), "--define",
                            "DOCUMENT=" + document, "--define", "COPY=" + GetPath("copy.ZORCont")}))
        << out.toStdString() << err.toStdString();
}

TEST_F(ZORHostProgramDocumentsTest, FilesOfTheCommandLineAreOneDocument)
{
    const QString part = WriteTetrahedron("part.stl");
    EXPECT_EQ(0, RunScript("in ZORHostMainWindow\n"
                           "expect geometries is 3\n"
                           "expect modified is yes\n"
                           "expect document is \"\"\n",
                           {part, part, "--open", part}))
        << out.toStdString() << err.toStdString();
}

} // namespace
