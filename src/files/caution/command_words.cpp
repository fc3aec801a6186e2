#include "files/caution/command_words.h"

#include <QHash>
#include <algorithm>
#include <array>

namespace lumeno::command_words {

namespace {

struct TraitWords {
  Trait trait;
  QStringView words;
};

constexpr std::array traitWords{
    TraitWords{Trait::deletesFiles, u"rm unlink shred srm wipe zf_rm rimraf del erase trash-empty"},
    TraitWords{
        Trait::connects,
        u"curl wget wget2 aria2c axel ssh scp sftp slogin rsh rlogin rcp mosh sshfs autossh nc ncat netcat "
        u"socat telnet ftp lftp tftp ncftp http https httpie xh yt-dlp youtube-dl gallery-dl ping ping6 "
        u"traceroute dig nslookup host whois nmap mail mailx mutt sendmail msmtp rclone s3cmd gsutil npx "
        u"uvx pipx bunx ztcp zftp lynx w3m links elinks smbclient transmission-cli ollama"},
    TraitWords{Trait::raisesRights, u"sudo doas su pkexec run0 gksu gksudo kdesu kdesudo sudoedit beesu"},
    TraitWords{Trait::endsPrograms, u"kill pkill killall killall5 xkill skill fuser"},
    TraitWords{
        Trait::staysRunning,
        u"nohup setsid disown daemonize daemon start-stop-daemon systemd-run at batch crontab launchctl "
        u"screen tmux dtach abduco bg systemctl sched"},
    TraitWords{Trait::isShell,
               u"sh bash zsh dash ash ksh ksh93 mksh pdksh yash rbash rzsh fish csh tcsh posh nu pwsh"},
    TraitWords{
        Trait::runsScripts,
        u"python python2 python3 pypy pypy3 ipython perl ruby node nodejs deno bun php lua luajit tclsh wish "
        u"expect osascript Rscript julia groovy java guile runghc ghci swift elixir raku vi vim nvim ex ed "
        u"emacs gdb make gmake ninja just rake ant mvn gradle m4 gnuplot irb jshell go cargo automator "
        u"shortcuts run-parts"},
    TraitWords{Trait::changesFiles,
               u"rm unlink shred srm wipe zf_rm zf_mv zf_ln mv cp ln install rsync tee dd truncate touch "
               u"mkdir rmdir "
               u"chmod chown chgrp setfacl chattr rename mmv sed perl rimraf mktemp mkfifo patch"},
    TraitWords{
        Trait::takesTexts,
        u"echo print printf tr expr seq date basename dirname true false : return exit break continue shift "
        u"sleep jot numfmt factor bc dc figlet cowsay kill pkill pgrep ssh slogin mosh"},
    TraitWords{
        Trait::takesPatternFirst,
        u"sed gsed grep egrep fgrep ggrep zgrep rg ag ack awk gawk mawk nawk jq yq perl rename prename cut "
        u"paste"},
    TraitWords{Trait::editsInPlace, u"jpegoptim optipng pngcrush oxipng dos2unix unix2dos mac2unix"},
};

constexpr QStringView noLongNames = u"";

constexpr std::array prefixes{
    Prefix{u"-", {u"", noLongNames, true}},
    Prefix{u"-p", {u"", noLongNames, true}},  // of the keyword `time`
    Prefix{u"builtin", {u"", noLongNames, true}},
    Prefix{u"command", {u"", noLongNames, true}},
    Prefix{u"exec", {u"a", noLongNames, true}},
    Prefix{u"noglob", {u"", noLongNames, true}},
    Prefix{u"nocorrect", {u"", noLongNames, true}},
    Prefix{u"nohup", {u"", noLongNames, true}},
    Prefix{u"setsid", {u"", noLongNames, true}},
    Prefix{u"busybox", {u"", noLongNames, true}},
    Prefix{u"toybox", {u"", noLongNames, true}},
    Prefix{u"env", {u"uCSa", u"unset chdir split-string argv0", true}, 0, true},
    Prefix{u"nice", {u"n", u"adjustment", true}},
    Prefix{u"ionice", {u"cn", u"class classdata", true}},
    Prefix{u"chrt", {u"TPD", noLongNames, true}, 1},
    Prefix{u"taskset", {u"", noLongNames, true}, 1},
    Prefix{u"time", {u"fo", u"format output", true}},
    Prefix{u"gtime", {u"fo", u"format output", true}},
    Prefix{u"timeout", {u"ks", u"kill-after signal", true}, 1},
    Prefix{u"gtimeout", {u"ks", u"kill-after signal", true}, 1},
    Prefix{u"stdbuf", {u"ioe", u"input output error", true}},
    Prefix{u"unbuffer", {u"", noLongNames, true}},
    Prefix{u"chronic", {u"", noLongNames, true}},
    Prefix{u"caffeinate", {u"tw", noLongNames, true}},
    Prefix{u"xargs",
           {u"InPLsdEaRSJ", u"max-args max-procs max-lines max-chars delimiter arg-file replace-str", true}},
    Prefix{u"gxargs", {u"InPLsdEa", u"max-args max-procs max-chars delimiter arg-file", true}},
    Prefix{u"sudo",
           {u"ughpCrtTURD", u"user group host prompt chdir chroot role type other-user", true},
           0,
           true},
    Prefix{u"doas", {u"uC", noLongNames, true}},
    Prefix{u"pkexec", {u"", u"user", true}},
    Prefix{u"run0", {u"ugD", u"user group chdir unit description property setenv nice", true}},
    Prefix{u"gksu", {u"um", u"user message", true}},
    Prefix{u"gksudo", {u"um", u"user message", true}},
    Prefix{u"kdesu", {u"un", noLongNames, true}},
    Prefix{u"kdesudo", {u"u", noLongNames, true}},
    Prefix{u"strace", {u"eopsaEuSPO", noLongNames, true}},
    Prefix{u"ltrace", {u"eopsaunDlxAF", noLongNames, true}},
    Prefix{u"flock", {u"wE", u"timeout wait conflict-exit-code", true}, 1},
    Prefix{u"chroot", {u"", u"userspec groups", true}, 1},
    Prefix{u"unshare", {u"SGRw", u"root wd setuid setgid", true}},
    Prefix{u"nsenter", {u"tSG", u"target setuid setgid", true}},
    Prefix{u"fakeroot", {u"lisb", noLongNames, true}},
    Prefix{u"firejail", {u"", noLongNames, true}},
    Prefix{u"systemd-run", {u"upMHE", u"unit property description setenv uid gid", true}},
    Prefix{u"systemd-inhibit", {u"", u"what who why mode", true}},
    Prefix{u"dbus-run-session", {u"", u"config-file dbus-daemon", true}},
    Prefix{u"xvfb-run", {u"efnpsw", u"server-num server-args", true}},
    Prefix{u"arch", {u"de", noLongNames, true}},
    Prefix{u"setarch", {u"", noLongNames, true}, 1},
    Prefix{u"rlwrap", {u"", noLongNames, true}},
    Prefix{u"prlimit", {u"p", u"pid", true}},
    Prefix{u"zargs", {u"", noLongNames, true}},
};

constexpr OptionForms imageForms{u"", u"", false};

constexpr std::array outputs{
    Output{u"sort", {u"okStT", u"output key buffer-size field-separator"}, u'o', u"output"},
    Output{u"curl", {u"oHdXAbceuFTxmr", u"output header data request"}, u'o', u"output"},
    Output{u"wget", {u"OoPUtTi", u"output-document output-file"}, u'O', u"output-document"},
    Output{u"pandoc", {u"oftVMH", u"output from to"}, u'o', u"output"},
    Output{u"cwebp", {u"oqmpszf", u""}, u'o', u""},
    Output{u"img2pdf", {u"oSsd", u"output"}, u'o', u"output"},
    Output{u"uniq", {u"fsw", u""}, QChar(), u"", true},
    Output{u"magick", imageForms, QChar(), u"", true},
    Output{u"convert", imageForms, QChar(), u"", true},
    Output{u"montage", imageForms, QChar(), u"", true},
    Output{u"composite", imageForms, QChar(), u"", true},
    Output{u"rsvg-convert", {u"owhfda", u"output width height format"}, u'o', u"output"},
    Output{u"heif-convert", {u"q", u""}, QChar(), u"", true},
    Output{u"pdfunite", {u"", u""}, QChar(), u"", true},
    Output{u"qpdf", {u"", u""}, QChar(), u"", true},
    Output{u"ps2pdf", {u"", u""}, QChar(), u"", true},
    Output{u"pdftotext", {u"flrxyWH", u""}, QChar(), u"", true},
    Output{u"iconv", {u"fto", u"from-code to-code output"}, u'o', u"output"},
    Output{u"gcc", {u"oILlDx", u""}, u'o', u""},
    Output{u"clang", {u"oILlDx", u""}, u'o', u""},
    Output{u"sips", {u"oszZgrpcf", u"out"}, u'o', u"out"},
};

constexpr QStringView programVariables =
    u"PATH path LD_PRELOAD LD_LIBRARY_PATH LD_AUDIT DYLD_INSERT_LIBRARIES DYLD_LIBRARY_PATH GIT_SSH "
    u"GIT_SSH_COMMAND "
    u"GIT_PAGER GIT_EDITOR GIT_EXTERNAL_DIFF GIT_ASKPASS GIT_EXEC_PATH GIT_CONFIG_PARAMETERS "
    u"GIT_CONFIG_COUNT "
    u"GIT_PROXY_COMMAND PAGER MANPAGER EDITOR VISUAL BROWSER BASH_ENV ENV ZDOTDIR PROMPT_COMMAND PERL5OPT "
    u"PERL5LIB PYTHONSTARTUP PYTHONPATH NODE_OPTIONS RUBYOPT RUBYLIB LESSOPEN LESSCLOSE TAR_OPTIONS SHELL "
    u"aliases galiases saliases functions commands fpath RSYNC_RSH SSH_ASKPASS";

template <class Table>
QHash<QStringView, const typename Table::value_type*> namesOf(const Table& table) {
  QHash<QStringView, const typename Table::value_type*> byName;
  for (const auto& entry : table) byName.insert(entry.name, &entry);
  return byName;
}

}  // namespace

Traits traits(QStringView name) {
  static const QHash<QStringView, Traits> byName = [] {
    QHash<QStringView, Traits> table;
    for (const TraitWords& entry : traitWords) {
      for (const QStringView word : entry.words.split(u' ')) table[word] |= entry.trait;
    }
    return table;
  }();
  if (const auto known = byName.constFind(name); known != byName.cend()) return *known;
  // python3.11, lua5.4, perl5.36.0
  qsizetype end = name.size();
  while (end > 0 && (name[end - 1].isDigit() || name[end - 1] == u'.')) --end;
  return end < name.size() && end > 0 ? byName.value(name.first(end)) : Traits();
}

const Prefix* prefix(QStringView name) {
  static const auto byName = namesOf(prefixes);
  return byName.value(name);
}

const Output* output(QStringView name) {
  static const auto byName = namesOf(outputs);
  return byName.value(name);
}

bool decidesPrograms(QStringView variable) {
  return listHas(programVariables, variable);
}

bool isHarmlessGitSetting(QStringView key) {
  return std::ranges::any_of(
      std::array<QStringView, 8>{u"user.", u"color.", u"advice.", u"core.quotepath", u"core.autocrlf",
                                 u"core.eol", u"commit.gpgsign", u"init.defaultbranch"},
      [&](QStringView beginning) { return key.startsWith(beginning, Qt::CaseInsensitive); });
}

QStringView connectingSubcommands(QStringView name) {
  struct Connecting {
    QStringView names;
    QStringView subcommands;
  };
  static constexpr std::array table{
      Connecting{u"git hg",
                 u"clone fetch pull push ls-remote submodule remote send-email svn incoming outgoing"},
      Connecting{u"pip pip2 pip3 uv conda mamba poetry", u"install download add sync create update lock"},
      Connecting{u"npm yarn pnpm bun", u"install i ci add update upgrade publish exec create init dlx"},
      Connecting{u"brew apt apt-get aptitude dnf yum zypper pacman snap flatpak port nix nix-env",
                 u"install update upgrade dist-upgrade full-upgrade reinstall download -S -Sy -Syu -iA"},
      Connecting{u"gem cargo go composer dotnet", u"install get add fetch update build publish push"},
      Connecting{u"docker podman", u"pull push run build login"},
      Connecting{u"gh aws gcloud az kubectl", u"*"},
  };
  const auto found =
      std::ranges::find_if(table, [&](const Connecting& entry) { return listHas(entry.names, name); });
  return found == table.end() ? QStringView() : found->subcommands;
}

}  // namespace lumeno::command_words
