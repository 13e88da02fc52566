# SPDX-License-Identifier: MIT
"""survey on files of every kind: what it decodes, counts, refuses and sorts. The program is the first argument."""
import os
import subprocess
import sys
import tempfile
import unittest

SURVEY = os.path.abspath(sys.argv.pop(1))


class Survey(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)

    def file(self, name, content):
        with open(os.path.join(self.folder.name, name), "wb") as file:
            file.write(content)
        return name

    def run_on(self, *arguments):
        environment = dict(os.environ, LC_ALL="en_US.UTF-8")
        return subprocess.run([SURVEY, *arguments], cwd=self.folder.name, capture_output=True, encoding="utf-8",
                              env=environment, check=False)

    def rows(self, *arguments):
        """The first table's rows as lists of words, without its heading."""
        table = self.run_on(*arguments).stdout.split("\n\n")[0]
        return [line.split() for line in table.splitlines()[1:]]

    def row(self, content):
        return self.rows(self.file("file", content))[0]

    def test_counts_lines_blank_ones_and_the_longest(self):
        self.assertEqual(self.row(b"one\n\n  \nthree!\nx"), ["5", "2", "6", "line", "4", "LF", "file"])

    def test_tells_every_terminator_that_is_mixed(self):
        text = "a\nb\rc\r\nd\u0085e\u2028f\u2029"
        self.assertEqual(self.row(text.encode())[-2], "LF+CR+CRLF+NEL+LS+PS")

    def test_a_file_without_a_line_end_has_none(self):
        self.assertEqual(self.row(b"abc"), ["1", "0", "3", "line", "1", "-", "file"])

    def test_an_empty_file_has_no_line(self):
        self.assertEqual(self.row(b""), ["0", "0", "0", "line", "0", "-", "file"])

    def test_reads_utf16_of_either_byte_order_by_its_mark(self):
        for mark, order in ((b"\xff\xfe", "utf-16-le"), (b"\xfe\xff", "utf-16-be")):
            self.assertEqual(self.row(mark + "äöü\nx".encode(order))[:3], ["2", "0", "3"])

    def test_reads_utf8_and_else_latin1(self):
        self.assertEqual(self.row("äöü".encode("utf-8"))[2], "3")
        self.assertEqual(self.row(b"\xe4\xf6\xfc")[2], "3")

    def test_refuses_what_is_no_text_and_surveys_the_others(self):
        bad = {"odd": b"\xff\xfea\0b", "half": b"\xff\xfe\x00\xd8", "zero": b"a\0b", "other": b"\xe4\0"}
        for name, content in bad.items():
            self.file(name, content)
        result = self.run_on(*bad, "absent", self.file("good", b"x\n"))
        self.assertEqual(result.returncode, 1)
        for name in bad:
            self.assertIn(f"survey: {name}: is no text that can be decoded\n", result.stderr)
        self.assertIn("survey: absent: No such file or directory\n", result.stderr)
        self.assertIn("good", result.stdout)
        self.assertIn("total of 1 file\n", result.stdout)

    def test_sums_all_files_in_a_total(self):
        self.file("a", b"1\n2\n")
        self.file("b", b"\nlonger\r\n")
        self.assertEqual(self.rows("a", "b")[-1], ["4", "1", "6", "LF+CRLF", "total", "of", "2", "files"])

    def test_sorts_by_any_column(self):
        self.file("file 10", b"a\n")
        self.file("file 2", b"a\nbbb\n")
        self.file("File 1", b"\n\na\r")
        names = lambda *options: [" ".join(row[6:]) for row in self.rows(*options, "file 10", "file 2", "File 1")[:-1]]
        self.assertEqual(names(), ["File 1", "file 2", "file 10"])
        self.assertEqual(names("--sort=lines"), ["File 1", "file 2", "file 10"])
        self.assertEqual(names("--sort=longest"), ["file 2", "file 10", "File 1"])
        self.assertEqual(names("--sort=blank")[0], "File 1")
        self.assertEqual(names("--sort=which")[0], "File 1")
        self.assertEqual(names("--sort=ends"), ["file 10", "file 2", "File 1"])

    def test_groups_by_extension_with_subtotals(self):
        for name in ("a.txt", "b.txt", "c.md", ".hidden"):
            self.file(name, b"x\n")
        out = self.run_on("a.txt", "b.txt", "c.md", ".hidden").stdout.split("\n\n")[1]
        ends = [line.split("LF")[-1].strip() for line in out.splitlines()[1:]]
        self.assertEqual(ends, [".md, 1 file", ".txt, 2 files", "none, 1 file"])

    def test_lists_the_ten_lengths_of_most_lines(self):
        self.file("a", b"".join(b"x" * length + b"\n" for length in range(12)) + b"yyy\n" * 2)
        lines = self.run_on("a").stdout.split("\n\n")[2].splitlines()
        self.assertEqual(lines[1].split(), ["3", "3"])
        self.assertEqual(len(lines), 11)
        self.assertEqual(lines[2].split(), ["1", "0"])

    def test_counts_words_of_any_language(self):
        self.file("a", "the cat, The dog\n".encode())
        self.file("b", "สวัสดีครับ 日本語を話す\n".encode())
        out = self.run_on("--words", "a", "b").stdout.split("\n\n")[3].splitlines()
        self.assertEqual(out[1].split(), ["4", "3", "a"])
        self.assertEqual(out[2].strip(), "the 2, cat 1, dog 1")
        self.assertEqual(out[3].split()[:2], ["5", "5"])
        self.assertEqual(out[5].split()[:2], ["9", "8"])

    def test_shows_how_to_use_it(self):
        for arguments in ((), ("--sort=size", "x"), ("--unknown", "x"), ("--words",)):
            result = self.run_on(*arguments)
            self.assertEqual(result.returncode, 2, arguments)
            self.assertIn("usage: survey", result.stderr)


if __name__ == "__main__":
    unittest.main()
