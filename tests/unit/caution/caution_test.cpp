#include "files/caution/caution.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QStringList>
#include <QTemporaryDir>

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;

const QString deletes = u"Deletes files."_s;
const QString deletesAll = u"Deletes a folder and everything in it."_s;
const QString network = u"Connects to the network."_s;
const QString unseenText = u"Runs text that is not shown here."_s;
const QString unchecked = u"Runs a script that is not checked."_s;
const QString rights = u"Asks for administrator rights."_s;
const QString unnamed = u"Runs a command that is only named while it runs."_s;
const QString unreadable = u"Cannot be read as a shell command."_s;
const QString inPlace = u"Changes files in place."_s;
const QString mayReplace = u"May replace files of the same names."_s;
const QString stays = u"Keeps running in the background."_s;
const QString option = u"Runs a program through an option."_s;
const QString gitSettings = u"Changes settings of Git that can run programs."_s;
const QString disguisedRm = u"Writes a command in an unusual way: rm"_s;
const QString unseenCharacters = u"Contains characters that cannot be seen."_s;

QString replaces(const QString& path) {
  return u"Replaces “%1”, which is there already."_s.arg(path);
}
QString outside(const QString& path) {
  return u"Reaches outside the folder: "_s + path;
}

/// A working folder with the files notes.txt, a and "b c", and a folder Old with a file a.
CautionSurroundings surroundings() {
  static const QSet<QString> paths{
      u"/home/user/work/notes.txt"_s, u"/home/user/work/a"_s,     u"/home/user/work/b c"_s,
      u"/home/user/work/Old"_s,       u"/home/user/work/Old/."_s, u"/home/user/work/Old/a"_s,
  };
  return {u"/home/user/work"_s, u"/home/user"_s, [](const QString& path) { return paths.contains(path); }};
}

QStringList textsOf(const QString& command) {
  QStringList texts;
  for (const Caution& caution : cautions(command, surroundings())) texts += caution.text;
  return texts;
}

struct Case {
  QString command;
  QStringList texts;
};

void expectTexts(const std::vector<Case>& cases) {
  for (const Case& c : cases) {
    QStringList texts = textsOf(c.command);
    QStringList expected = c.texts;
    texts.sort();
    expected.sort();
    EXPECT_EQ(texts, expected) << qPrintable(c.command) << "\n  gives: " << qPrintable(texts.join(u" / "_s));
  }
}

TEST(Cautions, LeaveOrdinaryCommandsCalm) {
  for (const QStringView command : {
           u"zip -r a.zip 'a b.txt' c.txt",
           u"mkdir -p Old && mv -- *.png Old",
           u"for f in *.HEIC; do sips -s format png \"$f\" --out \"${f%.*}.png\"; done",
           u"magick 'in put.png' -resize 50% out.png",
           u"convert a.png -quality 80 b.jpg",
           u"ffmpeg -i in.mov -vf scale=iw/2:-1 out.mp4",
           u"exiftool -all= photo.jpg",
           u"exiftool '-FileName<CreateDate' -d '%Y/%m-%d.%%e' photo.jpg",
           u"pdfunite a.pdf b.pdf all.pdf",
           u"tar czf x.tgz a 'b c'",
           u"unzip x.zip -d new",
           u"mkdir new && tar xf x.tar -C new",
           u"du -sh * | sort -h",
           u"wc -l *",
           u"sort a > b",
           u"for f in *.JPG; do mv -- \"$f\" \"${f:l}\"; done",
           u"i=1; for f in *.jpg; do mv \"$f\" \"photo-$(printf %03d $i).jpg\"; ((i++)); done",
           u"cp a d",
           u"mv a e",
           u"mv notes.txt Old",
           u"mv -n a notes.txt",
           u"ln -s a link",
           u"chmod 644 a",
           u"touch 'new file.txt'",
           u"find . -name '*.jpg' -exec mv {} Old/ \\;",
           u"find . -type f -print0 | xargs -0 ls -l",
           u"ls *.txt | wc -l",
           u"grep -rn '/etc' . | head",
           u"sed -n 's/a/b/p' a | awk '$3 > 5 {print $1}' > new.txt",
           u"sed '/^#/d' a > new.txt 2> /dev/null",
           u"echo '/etc/passwd rm -rf' > new.txt",
           u"echo done >> notes.txt",
           u"awk -F/ '{print $1}' a",
           u"cut -d / -f 1 a | tr / _",
           u"/usr/bin/zip -r a.zip a",
           u"cp \"$PWD/a\" d",
           u"cd Old && mv a ../new",
           u"shasum -a 256 * | tee sums.txt",
           u"git status && git log --oneline -- a && git add -A && git commit -m 'rm -rf'",
           u"ls -la 'مرحبا' '👨\u200D👩\u200D👧.png'",
           u"touch {1..5}.txt",
           u"if [[ -f a ]]; then cat a; else echo no; fi # rm a",
           u"stat -f %z a && file *(.) && print -rl -- *(om[1,3])",
           u"[[ a =~ ^b$ ]] && echo \"$((2 * 3))\"",
           u"bash --version",
           u"xargs -I{} mv {} Old < list.txt",
           u"split -b 10m big part-",
       }) {
    EXPECT_EQ(textsOf(command.toString()), QStringList()) << qPrintable(command.toString());
  }
}

TEST(Cautions, TellOfDeletion) {
  expectTexts({
      {u"rm x"_s, {deletes}},
      {u"rm -rf x"_s, {deletesAll}},
      {u"rm x --recursive"_s, {deletesAll}},
      {u"rm --rec x"_s, {deletesAll}},
      {u"rm -- -r"_s, {deletes}},
      {u"/bin/rm -R x"_s, {deletesAll}},
      {u"=rm x"_s, {deletes}},
      {u"unlink x; shred y"_s, {deletes}},
      {u"find . -name '*.tmp' -delete"_s, {deletes}},
      {u"find . -exec rm {} +"_s, {deletes}},
      {u"find . -type d -execdir sh -c 'rm -r \"$1\"' _ {} \\;"_s, {deletesAll}},
      {u"ls | xargs -n 1 -0 rm -r"_s, {deletesAll}},
      {u"env -i A=1 nice -n 5 nohup timeout -s KILL 5 command busybox rm x"_s, {deletes, stays}},
      {u"env -S 'rm x'"_s, {deletes}},
      {u"git clean -fdx"_s, {deletes}},
      {u"git -C . rm a"_s, {deletes}},
      {u"rsync -a --delete Old/ new/"_s, {deletes}},
      {u"zip -m a.zip a"_s, {deletes}},
      {u"{rm,-rf,x}"_s, {deletesAll}},
      {u"bash -c '{r,}m x'"_s, {deletes}},
      {u"{r..r}m x"_s, {deletes}},
      {u"if true; then (cd Old; { rm x; }) fi"_s, {deletes}},
      {u"f() { rm \"$1\"; }; f a"_s, {deletes}},
      {u"echo \"$(echo `rm x`)\" ${y:-$(rm z)}"_s, {deletes}},
      {u"cat <(rm x) <<E\n$(rm y)\nE"_s, {deletes}},
      {u"case a in a) rm x;; esac"_s, {deletes}},
      {u"parallel rm ::: a b"_s, {deletes}},
      {u"sh -c 'bash -lc \"zsh -c \\\"rm x\\\"\"'"_s, {deletes}},
      {u"trap 'rm x' EXIT"_s, {deletes}},
  });
}

TEST(Cautions, SeeThroughDisguises) {
  expectTexts({
      {u"r\\m x"_s, {deletes, disguisedRm}},
      {u"'r'm x"_s, {deletes, disguisedRm}},
      {u"r\"\"m x"_s, {deletes, disguisedRm}},
      {u"$'\\x72m' x"_s, {deletes, disguisedRm}},
      {u"$'\\162\\u006d' x"_s, {deletes, disguisedRm}},
      {u"env r\\\nm x"_s, {deletes}},
      {u"s\\udo ls"_s, {rights, u"Writes a command in an unusual way: sudo"_s}},
      {u"rm${IFS}-rf${IFS}x"_s, {unnamed, u"Hides a space behind a variable."_s}},
      {u"sh -c 'rm$IFS\"x\"'"_s, {unnamed, u"Hides a space behind a variable."_s}},
      {u"su\\\ndo rm x"_s, {rights, deletes}},
      {u"x=rm; $x a"_s, {unnamed}},
      {u"$(echo rm) a"_s, {unnamed}},
      {u"`echo rm` a"_s, {unnamed}},
      {u"/bin/r? a"_s, {unnamed}},
      {u"xargs -I{} {} a"_s, {unnamed}},
      {u"xargs -I % % a"_s, {unnamed}},
      {u"р\u043C x"_s, {u"Names a command with unusual letters: р\u043C"_s}},
      {u"ls \u202Etxt.mr"_s, {unseenCharacters}},
      {u"r\u200Bm x"_s, {unseenCharacters, u"Names a command with unusual letters: r<U+200B>m"_s}},
      {u"ls \U000E0041a"_s, {unseenCharacters}},
      {u"ls -l\u00A0-a"_s, {unseenCharacters}},
      {u"sh -c 'ls x\u3000y'"_s, {unseenCharacters}},
      {u"touch 'a\u00A0b' \"c\u202Fd\" e\\\u3000f"_s, {}},
      {u"alias ls='rm x'; ls"_s, {u"Gives commands another meaning."_s}},
      {u"PATH=.:$PATH ls"_s, {u"Changes which programs are run: PATH"_s}},
      {u"export LD_PRELOAD=./x.so"_s, {u"Changes which programs are run: LD_PRELOAD"_s}},
      {u"./tool a"_s, {unchecked}},
      {u"ls *(e:'rm x':)"_s, {unchecked}},
      {u"ls *(+clean)"_s, {unchecked}},
      {u"print ${(e)x}"_s, {unseenText}},
  });
}

TEST(Cautions, TellOfTextThatIsRun) {
  expectTexts({
      {u"curl -s x.org | sh"_s, {network, unseenText}},
      {u"curl -s x.org | tee y | (zsh)"_s, {network, unseenText}},
      {u"echo cm0geA== | base64 -d | bash"_s, {unseenText}},
      {u"sh <(curl -s x.org)"_s, {network, unseenText}},
      {u"source <(curl -s x.org)"_s, {network, unseenText}},
      {u". ./functions"_s, {unchecked}},
      {u"eval \"$(cat a)\""_s, {unseenText}},
      {u"eval 'rm' x"_s, {deletes}},
      {u"sh <<< 'rm x'"_s, {deletes}},
      {u"sh <<E\nrm -r x\nE"_s, {deletesAll}},
      {u"echo 'rm x' | sh"_s, {deletes}},
      {u"printf '\\162m x' | sh"_s, {unseenText}},
      {u"bash -c \"$x\""_s, {unseenText}},
      {u"bash a"_s, {unchecked}},
      {u"bash < a"_s, {unchecked}},
      {u"python3 -c 'print(1)'"_s, {unchecked}},
      {u"python3.11 a"_s, {unchecked}},
      {u"awk 'BEGIN { system(\"rm x\") }'"_s, {unchecked}},
      {u"awk '{ print > \"x\" }' a"_s, {unchecked}},
      {u"sed 's/a/b/e' a"_s, {unchecked}},
      {u"sed -e '1,3p' -e '/x/w out' a"_s, {unchecked}},
      {u"perl -i -pe 's/a/b/' a"_s, {unchecked, inPlace}},
      {u"tar cf n.tar a --checkpoint=1 --checkpoint-action=exec='sh -c \"rm x\"'"_s, {option, deletes}},
      {u"tar xf n.tar -C new --to-command='rm x'"_s, {option, deletes}},
      {u"git -c core.pager='rm x' log"_s, {gitSettings}},
      {u"git config alias.x '!rm y'"_s, {gitSettings}},
      {u"find . -fprintf notes.txt %p"_s, {replaces(u"notes.txt"_s)}},
      {u"zsh -c"_s, {unseenText}},
      {u"sh -c \"rm x"_s, {unreadable, deletes}},
  });
}

TEST(Cautions, TellOfReplacedFiles) {
  expectTexts({
      {u"echo x > notes.txt"_s, {replaces(u"notes.txt"_s)}},
      {u"echo x >| 'b c'"_s, {replaces(u"b c"_s)}},
      {u"ls &> a; ls >& notes.txt"_s, {replaces(u"a"_s), replaces(u"notes.txt"_s)}},
      {u"> a"_s, {replaces(u"a"_s)}},
      {u"ls 2>&1 > new"_s, {}},
      {u"mv x notes.txt"_s, {replaces(u"notes.txt"_s)}},
      {u"mv a Old"_s, {replaces(u"Old/a"_s)}},
      {u"cp -t Old/ a notes.txt"_s, {replaces(u"Old/a"_s)}},
      {u"cd Old && cp ../notes.txt a"_s, {replaces(u"a"_s)}},
      {u"(cd Old); cp x Old/../a"_s, {replaces(u"Old/../a"_s)}},
      {u"cp -r new/. Old"_s, {mayReplace}},
      {u"ln -sf x a"_s, {replaces(u"a"_s)}},
      {u"ln -s x a"_s, {}},
      {u"ls | tee a"_s, {replaces(u"a"_s)}},
      {u"dd if=x of=a"_s, {replaces(u"a"_s)}},
      {u"sort a -o a"_s, {replaces(u"a"_s)}},
      {u"truncate -s 0 notes.txt"_s, {replaces(u"notes.txt"_s)}},
      {u"ffmpeg -y -i x.mov a"_s, {replaces(u"a"_s)}},
      {u"magick x.png a"_s, {replaces(u"a"_s)}},
      {u"tar czf a Old"_s, {replaces(u"a"_s)}},
      {u"tar xzf x.tgz"_s, {mayReplace}},
      {u"tar -x -k -f x.tgz"_s, {}},
      {u"unzip -o x.zip"_s, {mayReplace}},
      {u"sed -i.bak 's/a/b/' a"_s, {inPlace}},
      {u"sips -Z 640 a"_s, {inPlace}},
      {u"mogrify -resize 50% a"_s, {inPlace}},
  });
}

TEST(Cautions, TellOfFilesThatAreReplacedByAPatternOrAVariable) {
  expectTexts({
      {u": > *"_s, {mayReplace}},
      {u"truncate -s 0 *"_s, {mayReplace}},
      {u"f=a.txt; : > $f"_s, {mayReplace}},
      {u"for f in *.txt; do sort \"$f\" > \"$f\"; done"_s, {mayReplace}},
      {u"for f in *.txt; do sort \"$f\" | sponge \"$f\"; done"_s, {mayReplace}},
      {u"ls | tee \"$(date).txt\""_s, {mayReplace}},
      {u"ls | tee -a *.log"_s, {}},
      {u"ls >> $f"_s, {}},
      {u"cat < $f"_s, {}},
      {u"ls > /dev/stdout 2> /dev/fd/$n"_s, {}},
      {u"ls | tee >(wc -l) > >(sort)"_s, {}},
      {u"mv *.txt \"$d\"; cp *.jpg \"$d\""_s, {}},
  });
  const QString command = u"cat a b > *.txt"_s;
  const auto found = cautions(command, surroundings());
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(command.sliced(found[0].start, found[0].length), u"*.txt"_s);
}

TEST(Cautions, TellOfWhatLiesOutside) {
  expectTexts({
      {u"cat /etc/hosts"_s, {outside(u"/etc/hosts"_s)}},
      {u"cp a ~/b"_s, {outside(u"~/b"_s)}},
      {u"cp a \"$HOME/b\" && cp a ~/work/new"_s, {outside(u"/home/user/b"_s)}},
      {u"mv a ../b"_s, {outside(u"../b"_s)}},
      {u"ls Old/../../x"_s, {outside(u"Old/../../x"_s)}},
      {u"ls ~root"_s, {outside(u"~root"_s)}},
      {u"echo x >> /tmp/$y"_s, {outside(u"/tmp/…"_s)}},
      {u"tar czf new.tgz -C/srv x --exclude-from=/opt/x"_s, {outside(u"/srv"_s), outside(u"/opt/x"_s)}},
      {u"cd .. && rm x"_s, {outside(u".."_s), deletes}},
      {u"cd; ls"_s, {outside(u"~"_s)}},
      {u"for f in /var/log/*; do cat \"$f\"; done"_s, {outside(u"/var/log/*"_s)}},
      {u"d=/srv; ls $d"_s, {outside(u"/srv"_s)}},
      {u"sed -f /srv/s.sed -n /etc/hosts"_s, {unchecked, outside(u"/srv/s.sed"_s), outside(u"/etc/hosts"_s)}},
      {u"cp '~' '$HOME' d"_s, {}},
      {u"cp /home/user/work/a /home/user/work/d"_s, {}},
      {u"cat < /dev/null > /dev/stderr"_s, {}},
      {u"cat /srv/a-very-long-name-that-nobody-wants-to-read-in-full/x.txt"_s,
       {outside(u"/srv/a-very-long-nam…-read-in-full/x.txt"_s)}},
      {u"cat '/srv/a\nb'"_s, {outside(u"/srv/a␊b"_s)}},
      {u"cat /a /b /c /d /e /f /g /h"_s,
       {outside(u"/a"_s), outside(u"/b"_s), outside(u"/c"_s), outside(u"/d"_s), outside(u"/e"_s),
        outside(u"/f"_s), u"Reaches outside the folder in more places."_s}},
  });
}

TEST(Cautions, TellOfTheSystemAround) {
  const QString ends = u"Ends running programs."_s;
  expectTexts({
      {u"pkexec ls; doas ls; run0 ls"_s, {rights}},
      {u"curl -O https://x.org/y"_s, {network}},
      {u"rsync -a x host:y"_s, {network}},
      {u"rsync -a x y"_s, {}},
      {u"git clone x"_s, {network}},
      {u"git remote -v && npm run x && pip list"_s, {}},
      {u"pip install x"_s, {network}},
      {u"cat < /dev/tcp/x/80"_s, {network}},
      {u"ffmpeg -i https://x.org/y new.mp4"_s, {network}},
      {u"ssh host 'rm -r x'"_s, {network, deletesAll}},
      {u"chmod -R 755 Old"_s, {u"Changes the permissions of a folder and everything in it."_s}},
      {u"chown --recursive x Old"_s, {u"Changes the owner of a folder and everything in it."_s}},
      {u"sleep 5 &"_s, {stays}},
      {u"setsid sleep 5; sleep 6 &!"_s, {stays}},
      {u"kill 1; pkill -f x"_s, {ends}},
      {u"kill -l"_s, {}},
      {u"git reset --hard"_s, {u"Discards changes in the Git repository."_s}},
  });
}

TEST(Cautions, MarkThePieceTheyAreAbout) {
  const QString command = u"ls 😀 && rm -r x; sh -c 'cat /etc/hosts' > notes.txt"_s;
  QStringList marked;
  for (const Caution& caution : cautions(command, surroundings())) {
    marked += command.sliced(caution.start, caution.length);
  }
  EXPECT_EQ(marked, (QStringList{u"rm"_s, u"'cat /etc/hosts'"_s, u"notes.txt"_s}));
}

TEST(Cautions, AskTheRealFileSystem) {
  QTemporaryDir folder;
  const auto make = [&](const QString& name) {
    QFile file(folder.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  };
  ASSERT_TRUE(QDir(folder.path()).mkdir(u"Old"_s));
  make(u"a"_s);
  make(u"Old/b"_s);
  const CautionSurroundings real{folder.path(), QDir::homePath(),
                                 [](const QString& path) { return QFileInfo::exists(path); }};
  const auto count = [&](const QString& command) { return cautions(command, real).size(); };
  EXPECT_EQ(count(u"mv b Old"_s), 1u);
  EXPECT_EQ(count(u"mv a Old"_s), 0u);
  EXPECT_EQ(count(u"mv b a"_s), 1u);
}

TEST(Cautions, AreFewHoweverManyNamesThereAre) {
  QString text;
  for (int i = 0; i < 10'000; ++i) {
    text += u"'r'm%1 /x%1 > a; \u043C%1; ./t%1; "_s.arg(i);
  }
  const auto found = cautions(text, surroundings());
  EXPECT_LT(found.size(), 40U);
  QStringList texts;
  for (const Caution& caution : found) texts += caution.text;
  EXPECT_TRUE(texts.contains(u"Writes a command in an unusual way in more places."_s));
  EXPECT_TRUE(texts.contains(u"Names a command with unusual letters in more places."_s));
}

TEST(Cautions, EndForHostileTexts) {
  for (const QStringView piece :
       {u"(",       u"((",          u"$(",     u"${",        u"$((",    u"`",       u"'",
        u"\"",      u"{",           u"{a,",    u"{a,b}",     u"}",      u"\\",      u"<<a ",
        u"env ",    u"find -exec ", u"sh -c ", u"eval ",     u"a;",     u"a ",      u"a&",
        u"> /x/",   u"mv a ",       u"cd ..;", u"/../",      u"$'\\x",  u"*(e:",    u"if ",
        u"do ",     u"case a in ",  u"[[ ",    u"for f (",   u"x=(",    u"git -c ", u"xargs ",
        u"<(",      u"=(",          u"a|",     u"parallel ", u"sed s/", u"a\n",     u"<<<",
        u"{1..99}", u"rm -r /x y\n"}) {
    const QString text = piece.toString().repeated(20000 / piece.size());
    for (const Caution& caution : cautions(text, surroundings())) {
      EXPECT_LE(caution.start + caution.length, text.size()) << qPrintable(piece.toString());
    }
  }
}

}  // namespace
}  // namespace lumeno
