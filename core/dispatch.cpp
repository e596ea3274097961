// The dispatch table from statement code to handler. Codes without a handler of their own do nothing;
// statements whose subsystem has no handler yet answer "Syntax error in ".
#include "core/dispatch.h"

#include <array>

#include "core/interpreter.h"
#include "core/keyword_table.h"
#include "core/statements.h"
#include "expr/statements.h"
#include "io/memory.h"
#include "io/statements.h"
#include "screen/statements.h"

namespace tessaly::core {

namespace {

Outcome doNothing(Interpreter&, int, int) { return kDone; }

Outcome notAvailable(Interpreter& in, int, int) { return in.raise(ErrorId::SyntaxError); }

struct HandlerTable {
    std::array<StatementHandler, 256> handlers {};

    constexpr HandlerTable()
    {
        for (auto& handler : handlers)
            handler = doNothing;
#define X(name, code, text) handlers[code] = notAvailable;
#include "core/keywords.def"
#undef X
        set(Stmt::Run, stmtRun);
        set(Stmt::End, stmtEnd);
        set(Stmt::Stop, stmtStop);
        set(Stmt::Cont, stmtCont);
        set(Stmt::Rem, stmtNothing);
        set(Stmt::Apostrophe, stmtNothing);
        set(Stmt::Data, stmtNothing);
        set(Stmt::Usr, stmtNothing);
        set(Stmt::Beep, stmtBeep);
        set(Stmt::DefUsr, stmtDefUsr);
        set(Stmt::OnErrorGoto, stmtOnErrorGoto);
        set(Stmt::Resume, stmtResume);
        set(Stmt::Error, stmtError);
        set(Stmt::Goto, stmtGoto);
        set(Stmt::GoTo, stmtGoto);
        set(Stmt::Gosub, stmtGosub);
        set(Stmt::Return, stmtReturn);
        set(Stmt::If, stmtIf);
        set(Stmt::On, stmtOnGoto);
        set(Stmt::For, stmtFor);
        set(Stmt::Next, stmtNext);
        set(Stmt::Read, stmtRead);
        set(Stmt::Restore, stmtRestore);
        set(Stmt::List, stmtList);
        set(Stmt::Llist, stmtLlist);
        set(Stmt::Delete, stmtDelete);
        set(Stmt::Del, stmtDelete);
        set(Stmt::Auto, stmtAuto);
        set(Stmt::Edit, stmtEdit);
        set(Stmt::New, stmtNew);
        set(Stmt::Renum, stmtRenum);
        set(Stmt::Ren, stmtRenum);
        set(Stmt::While, stmtWhile);
        set(Stmt::Wend, stmtWend);
        set(Stmt::Print, expr::stmtPrint);
        set(Stmt::Lprint, expr::stmtLprint);
        set(Stmt::Write, expr::stmtWrite);
        set(Stmt::PrintUsing, expr::stmtPrintUsing);
        set(Stmt::LprintUsing, expr::stmtLprintUsing);
        set(Stmt::Input, expr::stmtInput);
        set(Stmt::Cls, screen::stmtCls);
        set(Stmt::Screen, screen::stmtScreen);
        set(Stmt::View, screen::stmtView);
        set(Stmt::Window, screen::stmtWindow);
        set(Stmt::Pset, screen::stmtPset);
        set(Stmt::Line, screen::stmtLine);
        set(Stmt::LineParen, screen::stmtLineParen);
        set(Stmt::Circle, screen::stmtCircle);
        set(Stmt::Paint, screen::stmtPaint);
        set(Stmt::Draw, screen::stmtDraw);
        set(Stmt::Roll, screen::stmtRoll);
        set(Stmt::Copy, screen::stmtCopy);
        set(Stmt::Preset, screen::stmtPreset);
        set(Stmt::Point, screen::stmtPoint);
        set(Stmt::Locate, screen::stmtLocate);
        set(Stmt::Color, screen::stmtColor);
        set(Stmt::Console, screen::stmtConsole);
        set(Stmt::Key, screen::stmtKey);
        set(Stmt::KeyList, screen::stmtKeyList);
        set(Stmt::Let, expr::stmtLet);
        set(Stmt::Swap, expr::stmtSwap);
        set(Stmt::Defint, expr::stmtDefint);
        set(Stmt::Defsng, expr::stmtDefsng);
        set(Stmt::Defdbl, expr::stmtDefdbl);
        set(Stmt::Defstr, expr::stmtDefstr);
        set(Stmt::Clear, expr::stmtClear);
        set(Stmt::Dim, expr::stmtDim);
        set(Stmt::Erase, expr::stmtErase);
        set(Stmt::OptionBase, expr::stmtOptionBase);
        set(Stmt::Randomize, expr::stmtRandomize);
        set(Stmt::DefFn, expr::stmtDefFn);
        set(Stmt::MidStatement, expr::stmtMid);
        set(Stmt::DateStatement, expr::stmtDate);
        set(Stmt::TimeStatement, expr::stmtTime);
        set(Stmt::OnKeyGosub, stmtOnKeyGosub);
        set(Stmt::KeySwitch, stmtKeySwitch);
        set(Stmt::OnStopGosub, stmtOnStopGosub);
        set(Stmt::StopSwitch, stmtStopSwitch);
        set(Stmt::OnTimeGosub, stmtOnTimeGosub);
        set(Stmt::TimeSwitch, stmtTimeSwitch);
        set(Stmt::OnPenGosub, stmtOnPenGosub);
        set(Stmt::Pen, stmtPen);
        set(Stmt::OnComGosub, stmtComTraps);
        set(Stmt::Com, stmtComTraps);
        set(Stmt::Open, io::stmtOpen);
        set(Stmt::Close, io::stmtClose);
        set(Stmt::PrintFile, io::stmtPrintFile);
        set(Stmt::WriteFile, io::stmtWriteFile);
        set(Stmt::InputFile, io::stmtInputFile);
        set(Stmt::LineInputFile, io::stmtLineInputFile);
        set(Stmt::Load, io::stmtLoad);
        set(Stmt::Save, io::stmtSave);
        set(Stmt::Merge, io::stmtMerge);
        set(Stmt::Kill, io::stmtKill);
        set(Stmt::Chain, io::stmtChain);
        set(Stmt::Common, io::stmtCommon);
        set(Stmt::Name, io::stmtName);
        set(Stmt::Field, io::stmtField);
        set(Stmt::Lset, io::stmtLset);
        set(Stmt::Rset, io::stmtRset);
        set(Stmt::Get, io::stmtGetRecord);
        set(Stmt::Put, io::stmtPutRecord);
        set(Stmt::DefSeg, io::stmtDefSeg);
        set(Stmt::Poke, io::stmtPoke);
        set(Stmt::Bsave, io::stmtBsave);
        set(Stmt::Bload, io::stmtBload);
        set(Stmt::Call, io::stmtCall);
        set(Stmt::Out, io::stmtOut);
        set(Stmt::GetImage, screen::stmtGetImage);
        set(Stmt::PutImage, screen::stmtPutImage);
    }
    constexpr void set(Stmt code, StatementHandler handler) { handlers[static_cast<size_t>(code)] = handler; }
};

constexpr HandlerTable kHandlers;

} // namespace

StatementHandler handlerFor(int code)
{
    return kHandlers.handlers[static_cast<uint8_t>(code)];
}

} // namespace tessaly::core
