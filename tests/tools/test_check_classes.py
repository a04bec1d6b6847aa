"""tools/check_classes.py counts the functions that a class declares."""
import pathlib
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tools"))
import check_classes  # noqa: E402

HEADER = """// class Comment_cls { void No(); };
#define BODY(x) { void x(); }
class Forward_cls;
enum class Kind { ONE, TWO };
struct Plain_st {
    int mNumber = Make(1);
    std::array<float, 4> mColor = {0, 0, 0, 0};
    std::function<bool(int, float)> mHook;
    void (*mpPointer)(int) = nullptr;
    bool operator==(const Plain_st& other) const; // 1
    static Plain_st Make(int a = f(2),
                         const char* pText = "){;");  // 2
};
class Owner_cls final : public Base_cls<int(float)>, private Plain_st {
public:
    Owner_cls();                                       // 1
    explicit Owner_cls(int a) : mA(a), mText{"}"} {}   // 2
    Owner_cls(const Owner_cls&) = delete;
    ~Owner_cls() override = default;
    int GetA() const { return mA ? mA : 'x'; }         // 3
    virtual void Draw(std::function<void(int)> f) = 0; // 4
    Owner_cls& operator=(Owner_cls&& other);           // 5
    using Pair = std::pair<int, int>;
    friend void Free(Owner_cls&);
    enum Which { HEAD = int(0), BODY };

protected: template <class T> T Take(T value) const;   // 6

private:
    struct Inner_st {
        void One();
        int mB{int(3)};
    };
    int mA = 0;
    std::string mText;
};
"""


class CheckClasses(unittest.TestCase):
    def testCountsWhatAClassDeclares(self):
        self.assertEqual([("Plain_st", 5, 2), ("Owner_cls", 14, 6), ("Inner_st", 30, 1)],
                         list(check_classes.count_methods(HEADER)))

    def testLargeClassesAreFoundAndExceptionsEnd(self):
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            (root / "SRC").mkdir()
            header = root / "SRC" / "clsBig.h"
            large = check_classes.LARGE
            self.addCleanup(setattr, check_classes, "LARGE", large)
            for count, exceptions, expected in ((60, set(), 0), (61, set(), 1), (61, {"Big_cls"}, 0),
                                                (60, {"Big_cls"}, 1)):
                with self.subTest((count, exceptions)):
                    header.write_text("class Big_cls {\n" + "".join(f"void F{i}(){' {}' if i % 2 else ';'}\n" for i in range(count)) + "};\n")
                    check_classes.LARGE = exceptions
                    errors = check_classes.find(root)
                    self.assertEqual(expected, len(errors), errors)
                    self.assertTrue(all("Big_cls" in error for error in errors))


if __name__ == "__main__":
    unittest.main()
