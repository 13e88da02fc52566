# SPDX-License-Identifier: MIT
"""Each check of scripts/check accepts a sound tree and names what is wrong in a faulty one."""
import importlib.machinery
import importlib.util
import pathlib
import shutil
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
loader = importlib.machinery.SourceFileLoader("check", str(ROOT / "scripts/check"))
check = importlib.util.module_from_spec(importlib.util.spec_from_loader("check", loader))
loader.exec_module(check)

LICENCE = "// SPDX-License-Identifier: MIT\n"
SOUND = {
    "scripts/layers.txt": "# SPDX-License-Identifier: MIT\n"
                          "room platform/object:\nroom platform/strings: platform/object\nroom .: *\n"
                          "wall unicode/: platform/strings\n"
                          "defines platform/strings/Texts.cpp: platform/object\n",
    "scripts/untested.txt": "# SPDX-License-Identifier: MIT\nQuollFoundation.h  only includes\n",
    "scripts/words.txt": "# SPDX-License-Identifier: MIT\n\\bgrue\\b\tlamp\n",
    "QuollFoundation/QuollFoundation.h": LICENCE + '#include "QuollFoundation/platform/strings/Name.h"\n',
    "QuollFoundation/platform/object/Thing.h":
        LICENCE + "#pragma once\n\n/// A thing.\nclass QF_EXPORT Thing {\n  void be();\n};\n",
    "QuollFoundation/platform/strings/Name.h":
        LICENCE + '#pragma once\n\n#include "QuollFoundation/platform/object/Thing.h"\n\n#define QF_NAME 1\n',
    "QuollFoundation/platform/strings/Texts.cpp":
        LICENCE + '#include "QuollFoundation/platform/object/Thing.h"\n\n#include <unicode/uchar.h>\n\n'
                  "void Thing::be() {}\n",
    "tests/platform/object/ThingTests.cpp": LICENCE,
    "tests/platform/strings/NameTests.cpp": LICENCE,
    "tests/platform/strings/TextsInternalTests.cpp": LICENCE,
}
STRINGS = "QuollFoundation/platform/strings/"
OBJECT = "QuollFoundation/platform/object/"

# check, file that becomes faulty (None: a file is missing), its content after the licence line, what is said
FAULTS = [
    ("format", STRINGS + "Name.h", "int  x;\n", STRINGS + "Name.h"),
    ("columns", STRINGS + "Name.h", "// " + 118 * "x" + "\n", "Name.h:2: 121 columns"),
    ("include form", STRINGS + "Name.h", '#include "Thing.h"\n', "Name.h:2: Thing.h"),
    ("include form", STRINGS + "Name.h", '#include "QuollFoundation/Nowhere.h"\n', "does not exist"),
    ("include form", STRINGS + "Name.h", '#include "QuollFoundation/platform/strings/XInternal.h"\n', "Name.h:2"),
    ("include form", "examples/survey.cpp", '#include "QuollFoundation/platform/strings/XInternal.h"\n',
     "not installed"),
    ("layers", OBJECT + "Thing.h", '#include "QuollFoundation/platform/strings/Name.h"\n',
     "platform/object may not include"),
    ("layers", "QuollFoundation/attic/Old.h", "", "no room"),
    ("circles", OBJECT + "Thing.h", '#include "QuollFoundation/platform/strings/Name.h"\n', "Thing.h -> "),
    ("walls", STRINGS + "Name.h", "#include <unicode/uchar.h>\n", "in a public header"),
    ("walls", OBJECT + "Thing.cpp", "#include <unicode/uchar.h>\n", "outside platform/strings"),
    ("definitions", STRINGS + "Name.cpp", "void Thing::be() {}\n", "Name.cpp:2: defines a member of Thing"),
    ("tests by name", STRINGS + "Orphan.h", "", "no tests/platform/strings/OrphanTests.cpp"),
    ("tests by name", "scripts/untested.txt", "platform/strings/Name.h\n", "without a reason"),
    ("test files", "tests/platform/strings/Name.cpp", "", "in no test program"),
    ("test files", "tests/platform/strings/NameTests.cpp", "std::this_thread::sleep_for(1s);\n", "sleep_for"),
    ("test files", "tests/platform/strings/NameTests.cpp", "TEST(Name, DISABLED_Is) {}\n", "DISABLED_Is"),
    ("test files", "tests/platform/strings/NameTests.cpp", "EXPECT_TRUE(true);\n", "EXPECT_TRUE(true)"),
    ("macros", OBJECT + "Thing.h", "#define THING 1\n", "THING"),
    ("macros", OBJECT + "Thing.h", "".join(f"#define QF_{n} 1\n" for n in range(10)), "11: "),
    ("documented", OBJECT + "Thing.h", "class QF_EXPORT Other {};\n", "Thing.h:2: class QF_EXPORT Other"),
    ("documented", OBJECT + "Thing.h", "/// One.\nQF_EXPORT void a();\n\nQF_EXPORT void b();\n", "void b()"),
    ("records", STRINGS + "Texts.cpp", 'ClassBuilder<Text>("NSText").build();\n', "NSText is not in"),
    ("records", STRINGS + "Texts.cpp", 'constinit const AdditionGroup<NSText> additions{"A", {}};\n', "additions is not in"),
    ("todo form", STRINGS + "Texts.cpp", "// TODO: mend\n", "Texts.cpp:2: // TODO: mend"),
    ("words", "README.md", "It is dark; a grue may eat you.\n", "README.md:2"),
]


def plant(folder, files):
    for path, text in files.items():
        target = pathlib.Path(folder, path)
        target.parent.mkdir(parents=True, exist_ok=True)
        target.write_text(text)


class Checks(unittest.TestCase):
    def said_of(self, name, files):
        with tempfile.TemporaryDirectory() as folder:
            shutil.copy(ROOT / ".clang-format", folder)
            plant(folder, files)
            return list(check.CHECKS[name][0](check.Tree(folder)))

    def test_a_sound_tree_passes_every_check(self):
        for name in check.CHECKS:
            with self.subTest(name):
                self.assertEqual(self.said_of(name, SOUND), [])

    def test_each_fault_is_named(self):
        for name, path, text, expected in FAULTS:
            with self.subTest(name, path=path, text=text):
                said = self.said_of(name, {**SOUND, path: LICENCE + text})
                self.assertIn(expected, "\n".join(said))

    def test_a_missing_licence_line_is_named(self):
        said = self.said_of("licence line", {**SOUND, STRINGS + "Name.h": "#pragma once\n"})
        self.assertEqual(said, [STRINGS + "Name.h"])

    def test_a_commit_without_area_or_with_a_long_subject_is_named(self):
        for subject, sound in [("text: Add lines", True), ("core, text: Add lines", True), ("Add lines", False),
                               ("text: add lines", False), ("text: Add " + "x" * 72, False)]:
            with self.subTest(subject), tempfile.TemporaryDirectory() as folder:
                subprocess.run(["git", "init", "-q", folder], check=True)
                subprocess.run(["git", "-C", folder, "-c", "user.name=n", "-c", "user.email=e", "commit", "-q",
                                "--allow-empty", "-m", subject], check=True)
                self.assertEqual(list(check.CHECKS["commit form"][0](check.Tree(folder))) == [], sound)

    def test_every_check_has_a_fault(self):
        proven = {fault[0] for fault in FAULTS} | {"licence line", "commit form"}
        self.assertEqual(proven, set(check.CHECKS))


if __name__ == "__main__":
    unittest.main()
