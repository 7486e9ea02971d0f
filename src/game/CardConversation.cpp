#include "game/CardConversation.h"

#include "board/BoardTables.h"
#include "cards/DeckMoves.h"
#include "cards/Reactions.h"
#include "game/GameFiles.h"
#include "link/SharedFolderFiles.h"
#include "shell/Global.h"
#include "shell/RunLog.h"
#include "shell/TurnNotice.h"
#include "ui/BoardDisplay.h"
#include "ui/CardPanels.h"
#include "ui/Dialogs.h"
#include "ui/Hoofdvenster.h"

namespace vk {

namespace {

// Puts the question of a card in hand to the player, who is told first when
// his window is not the active one.
bool OfferedAndTaken(Hoofdvenster& w, const CardOffer& offer)
{
    if (!offer.Asked)
        return false;
    TellPlayer(w, Notice::Question);
    return AskYesNo(QString::fromStdString(offer.Text), QString::fromStdString(offer.Title));
}

void SendAnswer(Hoofdvenster& w, int answer)
{
    SendMessage(w.V.CurrentFile, MessageKindId::Answer, QStringList{QString::number(answer)});
}

// Question 1: the shot at the own jeep. A Vrijgeleide in hand is offered.
int AnswerShotAtJeep(Hoofdvenster& w)
{
    WindowValues& v = w.V;
    const int side = v.Board.LocalSide;
    const CardOffer offer = OfferAgainst(kAskSafeConductAgainstShot, v.Progress.Deck, side);
    if (!OfferedAndTaken(w, offer))
        return kAnswerNoReaction;
    LogAt(QStringLiteral("using personnel card number 29 against shooting at my jeep at "));
    UseSafeConduct(v.Progress.Deck, side);
    return kAnswerCardUsed;
}

void ContraBeatsSafeConductInShot(Hoofdvenster& w)
{
    WindowValues& v = w.V;
    MessageBox(QStringLiteral("Uw vrijgeleide werd verijdeld door de contra spionage van de vijand"), BoxButtons::Ok,
               BoxIcon::Stop, QStringLiteral("Jeep toch vernietigd!"));
    MirrorCardPlayedByAsker(v.Progress.Deck, v.Progress.ExternalSide, kContraSpionage);
    LogAt(QStringLiteral("external player anulled my card 29 with card number 24 at "));
}

void SafeConductAccepted(Hoofdvenster& w)
{
    WindowValues& v = w.V;
    MessageBox(QStringLiteral("De vrijgeleide is aanvaard, de kompagnie\u00ebn mogen naar het kamp en de jeep terug "
                              "naar het gevangenenkamp."),
               BoxButtons::Ok, BoxIcon::None, QStringLiteral("Vrijgeleide aanvaard!"));
    LogAt(QStringLiteral("using card 29 is approved at "));
    SendJeepBackBySafeConduct(v.Board, v.Board.LocalSide);
    ShowBoard(w);
}

// Questions 4 and 6 open alike: the ambush is logged.
void AmbushAnnounced()
{
    LogAt(QStringLiteral("my jeep is heading into an ambush at "));
    LogLine(QStringLiteral("opponent used personnel card 25"));
}

int AnswerAmbushWithSafeConduct(Hoofdvenster& w)
{
    WindowValues& v = w.V;
    AmbushAnnounced();
    MirrorCardPlayedByAsker(v.Progress.Deck, v.Progress.ExternalSide, kHinderlaag);
    ShowPersonnelPicture(w, kHinderlaag);
    const int side = v.Board.LocalSide;
    const CardOffer offer = OfferAgainst(kAskSafeConductAgainstAmbush, v.Progress.Deck, side);
    if (!OfferedAndTaken(w, offer))
        return kAnswerNoReaction;
    LogAt(QStringLiteral("using personnel card number 29 against the ambush at "));
    UseSafeConduct(v.Progress.Deck, side);
    return kAnswerCardUsed;
}

void DestroyOwnJeep(Hoofdvenster& w)
{
    DestroyJeepInAmbush(w.V.Board, w.V.Board.LocalSide);
    ShowBoard(w);
}

void ContraBeatsSafeConductInAmbush(Hoofdvenster& w)
{
    WindowValues& v = w.V;
    LogAt(QStringLiteral("external player anulled my card 29 with card number 24 at "));
    MirrorContraBeatingSafeConduct(v.Progress.Deck, v.Progress.ExternalSide);
    ShowPersonnelPicture(w, kContraSpionage);
    MessageBox(QStringLiteral("Uw tegenstander heeft uw Vrijgeleide geblokkeerd met zijn Contra Spionage."),
               BoxButtons::Ok, BoxIcon::Warning, QStringLiteral("Jeep wordt toch vernietigd"));
    DestroyOwnJeep(w);
}

int AnswerAmbushWithContra(Hoofdvenster& w)
{
    WindowValues& v = w.V;
    AmbushAnnounced();
    ShowPersonnelPicture(w, kHinderlaag);
    const int side = v.Board.LocalSide;
    const CardOffer offer = OfferAgainst(kAskContraAgainstAmbush, v.Progress.Deck, side);
    if (!OfferedAndTaken(w, offer))
        return kAnswerNoReaction;
    LogAt(QStringLiteral("using personnel card number 24 against the ambush at "));
    UseContraAgainstAmbush(v.Progress.Deck, side);
    return kAnswerCardUsed;
}

// The shooter's side once the opponent covered his jeep: Contra spionage from
// the own hand, or the jeep goes back.
SafeConductAnswer AfterSafeConductUsed(Hoofdvenster& w, int shooterSide)
{
    WindowValues& v = w.V;
    const ContraOffer offer = ContraOfferAgainstSafeConduct(v.Progress.Deck, shooterSide);
    const QString title = QString::fromStdString(offer.Title);
    switch (offer.What) {
    case ContraOffer::Kind::ShotGoesOn:
        return SafeConductAnswer::ShotGoesOn;
    case ContraOffer::Kind::Ask:
        if (AskYesNo(QString::fromStdString(offer.Text), title)) {
            TellOpponent(w, kSafeConductBeatenInShot);
            UseContraAgainstSafeConduct(v.Progress.Deck, shooterSide);
            return SafeConductAnswer::ShotGoesOn;
        }
        break;
    case ContraOffer::Kind::JeepGoesBack:
        break;
    }
    MessageBox(QStringLiteral("Uw tegenstander heeft een vrijgeleide voor zijn jeep gebruikt."), BoxButtons::Ok,
               BoxIcon::Warning, title);
    TellOpponent(w, kSafeConductStands);
    return SafeConductAnswer::JeepSentBack;
}

SafeConductAnswer AskAboutShotAtJeep(Hoofdvenster& w, int shooterSide)
{
    WindowValues& v = w.V;
    if (!AsksSafeConduct(v.Progress.Deck, shooterSide))
        return SafeConductAnswer::ShotGoesOn;
    const int answer = AskOpponent(
        w, MessageKindId::Question, QStringList{QString::number(kAskSafeConductAgainstShot)},
        QStringLiteral("Jeep kan over een vrijgeleide beschikken"),
        QStringLiteral("Er wordt geinformeerd of uw tegenstander beschikt over een vrijgeleide omdat zijn jeep wordt "
                       "aangevallen..."),
        true);
    if (answer != kAnswerCardUsed)
        return SafeConductAnswer::ShotGoesOn;
    MirrorCardUsedAgainstAsker(v.Progress.Deck, OtherSide(shooterSide), kVrijgeleide);
    return AfterSafeConductUsed(w, shooterSide);
}

} // namespace

int AskOpponent(Hoofdvenster& w, MessageKindId kind, const QStringList& values, const QString& title,
                const QString& text, bool waitForConsumed)
{
    WindowValues& v = w.V;
    if (waitForConsumed)
        WaitForConsumed(v);
    SendMessage(OwnFile(w, kind), kind, values);
    MessageBox(text, BoxButtons::Ok, BoxIcon::Warning, title);
    const QString answerFile = OpponentFile(w, MessageKindId::Answer);
    v.InputLock = true;
    PumpUntil([&answerFile] { return FileExists(answerFile); }, QStringLiteral("opponent's .ans"));
    v.InputLock = false;
    const int answer = NumberIn(ReadWholeMessage(MessageKindId::Answer, answerFile), "ANSWER");
    DeleteOnce(answerFile);
    return answer;
}

void TellOpponent(Hoofdvenster& w, int question)
{
    WindowValues& v = w.V;
    const QString file = OwnFile(w, MessageKindId::Question);
    SendMessage(file, MessageKindId::Question, QStringList{QString::number(question)});
    v.LastSentFile = file;
    WaitForConsumed(v);
}

namespace {

// A question whose "card used" answer takes `card` from the mirror of the
// opponent's hand and sets `flag`: -1 then, else 0.
int AskAboutCard(Hoofdvenster& w, bool& flag, int card, MessageKindId kind, const QStringList& values,
                 const QString& title, const QString& text, bool waitForConsumed)
{
    WindowValues& v = w.V;
    flag = false;
    if (AskOpponent(w, kind, values, title, text, waitForConsumed) != kAnswerCardUsed)
        return 0;
    MirrorCardUsedAgainstAsker(v.Progress.Deck, v.Progress.ExternalSide, card);
    flag = true;
    return -1;
}

} // namespace

int AnnouncePersonnel(Hoofdvenster& w, int cardIndex)
{
    WindowValues& v = w.V;
    return AskAboutCard(
        w, v.CardAnnulled, kContraSpionage, MessageKindId::PersonnelUsed,
        QStringList{QString::number(cardIndex), QString::number(v.PickedVehicle), QString::number(v.PickedField),
                    QStringLiteral("100")},
        QStringLiteral("Tegenstander kan over Contra Spionage beschikken"),
        QStringLiteral("Uw tegenstander wordt op de hoogte gesteld dat u een Pesonnel kaart gebruikt. Deze kan over "
                       "Contra Spionage beschikken die uw kaart kan ontkrachten..."),
        true);
}

int AskVrijgeleide(Hoofdvenster& w)
{
    return AskAboutCard(
        w, w.V.VrijgeleideHeld, kVrijgeleide, MessageKindId::Question,
        QStringList{QString::number(kAskSafeConductAgainstAmbush)},
        QStringLiteral("Jeep kan over een vrijgeleide beschikken"),
        QStringLiteral("Uw tegenstander wordt op de hoogte gesteld dat u zijn jeep belaagt met een hinderlaag. "
                       "Mogelijks beschikt de jeep over een vrijgeleide..."),
        true);
}

int AskContraSpionage(Hoofdvenster& w)
{
    // Straight after question 4, which the opponent has already taken.
    return AskAboutCard(
        w, w.V.CardAnnulled, kContraSpionage, MessageKindId::Question,
        QStringList{QString::number(kAskContraAgainstAmbush)},
        QStringLiteral("Tegenstander kan over Contra Spionage beschikken"),
        QStringLiteral("Er wordt geinformeerd of uw tegenstander beschikt over Contra Spionage om uw Hinderlaag kaart "
                       "te ontkrachten..."),
        false);
}

SafeConductSeam ShotAtJeepSeam(Hoofdvenster& w)
{
    SafeConductSeam seam;
    seam.localSide = w.V.Board.LocalSide;
    seam.ask = [&w](int shooterSide) { return AskAboutShotAtJeep(w, shooterSide); };
    return seam;
}

void AnswerQuestion(Hoofdvenster& w, const QString& file)
{
    WindowValues& v = w.V;
    const MessageValues asked = ReadWholeMessage(MessageKindId::Question, file);
    const int question = NumberIn(asked, "QUESTION");
    // The asker never writes V1 to V3: they arrive as -1, as read.
    v.Act.ActVeh[0] = NumberIn(asked, "V1");
    v.Act.ActVeh[1] = NumberIn(asked, "V2");
    v.CurrentCard = NumberIn(asked, "V3");
    DeleteOnce(file);
    v.CurrentFile = OwnFile(w, MessageKindId::Answer);
    switch (question) {
    case kAskSafeConductAgainstShot:
        SendAnswer(w, AnswerShotAtJeep(w));
        break;
    case kSafeConductBeatenInShot:
        ContraBeatsSafeConductInShot(w);
        break;
    case kSafeConductStands:
        SafeConductAccepted(w);
        break;
    case kAskSafeConductAgainstAmbush:
        SendAnswer(w, AnswerAmbushWithSafeConduct(w));
        break;
    case kSafeConductBeatenInAmbush:
        ContraBeatsSafeConductInAmbush(w);
        break;
    case kAskContraAgainstAmbush: {
        const int answer = AnswerAmbushWithContra(w);
        SendAnswer(w, answer);
        if (answer != kAnswerCardUsed)
            DestroyOwnJeep(w);
        break;
    }
    default:
        // An unknown question is only deleted.
        break;
    }
    if (question == kAskSafeConductAgainstShot || question == kAskSafeConductAgainstAmbush ||
        question == kAskContraAgainstAmbush)
        v.LastSentFile = v.CurrentFile;
}

} // namespace vk
