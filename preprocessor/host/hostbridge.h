#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "include/krpre.h"
#include "korelpre/errors/fileobserver.h"
#include "korelpre/headers/headercache.h"
#include "korelpre/rules/ruleobserver.h"
#include "lib_base/output.h"
#include "preprocessor/host/rulereport.h"
#include "preprocessor/run/runhost.h"

/// What stands behind the opaque type of the C interface.
struct krpre_headers {
  explicit krpre_headers(tString directory) : cache(std::move(directory)) {}
  precomp::tHeaderCache cache;
};

/// Hands what a run tells its host to the callbacks of the C interface.
class tHostBridge : public tRunHost,
                    public tOutputSink,
                    private precomp::tRuleObserver,
                    private precomp::tFileObserver {
 public:
  /// `host` must outlive this object. Allocates nothing, so that whatever fails can be told.
  explicit tHostBridge(const krpre_host& host);

  const krpre_host& host() const { return host_; }
  /// Why the host's include directories or defines cannot be used; empty when they can.
  tString fault() const;
  /// Prints that fault and tells the host of it.
  void refuse(const tString& fault);

  bool wantsMessages() const { return host_.message != nullptr; }
  void write(std::string_view text) override;

  precomp::tHeaderCache* headers() override {
    return host_.headers == nullptr ? nullptr : &host_.headers->cache;
  }
  void addOptions(tRunOptions& options) const override;
  bool wantsOutput() const override { return (host_.flags & KRPRE_NO_OUTPUT) == 0; }
  tString outputName() const override { return tString(host_.outputName); }
  bool outputIsChosen() const override { return (host_.flags & KRPRE_OUTPUT_CHOSEN) != 0; }
  const tDependencies* dependencies() const override {
    return dependencies_.file().name.empty() ? nullptr : &dependencies_;
  }
  bool takesOutput() const override { return host_.output != nullptr; }
  void takeOutput(const tString& source, const std::string& text) override;
  bool savesCopy() const override { return (host_.flags & KRPRE_SAVE_TEMPS) != 0; }
  bool keepsUnchanged() const override { return (host_.flags & KRPRE_KEEP_UNCHANGED) != 0; }
  bool takesTurns() const override { return (host_.flags & KRPRE_TAKE_TURNS) != 0; }
  void sessionBegins(precomp::KorelPre16& session, const tString& copy,
                     const tString& source) override;
  void sessionBeginsAgain(precomp::KorelPre16& session) override;
  void sessionDone(precomp::KorelPre16& session) override;
  void sourceRead(const tString& source) override;
  void outputDone(const tString& source, const tString& name, bool written) override;
  bool wantsDiagnoses() const override { return host_.diagnostic != nullptr; }
  int mostErrors() const override { return host_.mostErrors; }
  void diagnosed(const precomp::tDiagnosis& diagnosis) override;
  void diagnosedInBrief(int code) noexcept override;

 private:
  void statementBegins(const precomp::tTknString& statement, const tString& file) override;
  void ruleTried(const precomp::tRuleTrial& trial) override;
  void ruleMatched(const precomp::tBaseXChg& rule, int start,
                   const precomp::tTknString& statement) override;
  void ruleApplied(const precomp::tBaseXChg& rule, int start,
                   const precomp::tTknString& statement) override;
  void statementEnds(const precomp::tTknString& statement) override;
  void fileRead(const tString& name) override;

  /// Keeps the statement's text for the steps up to the next rewrite.
  void render(const precomp::tTknString& statement);
  /// Completes `step` with what is common to all of them and hands it over.
  void send(krpre_step step, int kind, const precomp::tTknString& statement);
  void sendWithRule(krpre_step step, int kind, const precomp::tBaseXChg& rule, int start,
                    const precomp::tTknString& statement);
  void listRules(const precomp::tXChgArray& rules);

  std::string_view containerOf(const tString& name);
  void tellOfFile(int event, const tString& source, const tString& name);

  const krpre_host& host_;
  tShownSource names_;
  tDependencies dependencies_;
  // Of the host's files, by plainPath; made when a file is read.
  std::optional<std::unordered_map<std::string, std::string_view>> containers_;

  // The statement being rewritten.
  tString file_;
  tString text_;
  int lastLine_ = 0;
  int trials_ = 0;
  std::unordered_map<const precomp::tBaseXChg*, std::unique_ptr<tRuleReport>> reports_;
};
