// The Radio Yambo cards in the window: the drawer's picks of his lost
// vehicles in Stock and of the enemy's vehicle, the choice sent in ".ray",
// the opponent's Personnel cards spied on, and the other copy following the
// card from ".ryc" and ".ray".

#include "CardsFixture.h"

#include "board/VehicleTag.h"
#include "game/RadioYamboPlay.h"
#include "ui/CardPanels.h"

namespace vk::test {
namespace {

class RadioYamboTest : public CardsTest {
protected:
    // Card `card` drawn at the end of the own turn; its board text is read.
    void Draw(int card)
    {
        OnTop({card});
        ReadBoardMessages();
        EndOfTurnWithDraws(1);
    }
    // A vehicle of `side` lost earlier, its picture where the loss put it.
    void Lose(int side, int slot)
    {
        const int pos = B().VehiclePos(side, slot);
        if (IsRoadField(pos))
            B().BoardCell(pos) = 0;
        B().VehiclePos(side, slot) = kOutOfGame;
        Picture& picture = B().VehiclePicture(side, slot);
        picture.InStock = side == Local();
        PutPicture(picture, DestroyedVehicleBox(B().BoardSide, side, slot));
        Redraw();
    }
    const Sent* Ray() { return SentFile(".ray"); }
    static QByteArray RayText(int card, int v1, int v2)
    {
        return "[GENERAL]\r\nCARD=" + QByteArray::number(card) + "\r\nV1=" + QByteArray::number(v1) +
               "\r\nV2=" + QByteArray::number(v2) + "\r\nV3=100\r\n";
    }
    void WhenWaiting(const char* label, std::function<void()> act)
    {
        When(label, [label] { return Waiting() == QLatin1String(label); }, std::move(act));
    }
    // The opponent's files of a card arrive in his turn; the turn then ends.
    void FollowTheirCard(const QString& extension, const QByteArray& text)
    {
        const QString path = folder + QStringLiteral("/bert") + extension;
        Put(path, text);
        When("followed", [path] { return Idle() && !FileExists(path); },
             [&] { SendTheirEndOfTurn(V().Progress.TurnNumber); });
        FollowTurn();
    }
};

const QString kSpecificShown = QStringLiteral("Tegenspeler trok Radio Yambo kaart|Je tegenspeler heeft als kompaskaart "
                                              "het radio yambo bericht ontvangen die u nu te zien krijgt. Klik 'OK' om "
                                              "dit bericht en de kaart te sluiten, en de instructies uit te voeren.");

TEST_F(RadioYamboTest, GeneralMobilisationTakesALostVehicleBackFromStock)
{
    Lose(1, 2);
    Lose(1, 6);
    B().ReserveCompanies(1) = 5;
    B().CampCompanies(1) = 10;
    Draw(4);
    WhenWaiting("Radio Yambo stock pick", [this] {
        EXPECT_EQ(Global().BoardText, Board("U mag een voertuig naar je kamp overbrengen vanuit de 'stock'. dubbelklik "
                                            "op het gewenste voertuig."));
        EXPECT_EQ(V().StockPicksLeft, 1);
        EXPECT_EQ(B().ReserveCompanies(1), 2) << "three companies went to the camp first";
        DoubleClick(Vehicle(2, 0)); // an enemy vehicle does not serve the pick
        DoubleClick(Vehicle(1, 6));
    });
    PlayTurn();
    ASSERT_NE(Ray(), nullptr);
    EXPECT_EQ(Ray()->Raw, RayText(4, 6, 100));
    EXPECT_EQ(V().StockPicksLeft, 0);
    EXPECT_EQ(B().VehiclePos(1, 6), 113);
    EXPECT_FALSE(B().VehiclePicture(1, 6).InStock);
    EXPECT_EQ(B().VehiclePos(1, 2), 0);
    EXPECT_EQ(B().VehiclePos(2, 0), 116);
    EXPECT_EQ(V().LastSentFile, OwnPath(".ray"));
}

TEST_F(RadioYamboTest, GeneralMobilisationWithoutALostVehicleStillSendsItsChoice)
{
    V().Act.ActVeh[0] = 3;
    Draw(4);
    PlayTurn();
    ASSERT_NE(Ray(), nullptr);
    // The first entry goes as it stood: the vehicle of the turn's action.
    EXPECT_EQ(Ray()->Raw, RayText(4, 3, 100));
}

TEST_F(RadioYamboTest, AlliedHelpPicksTwoLostVehicles)
{
    Lose(1, 0);
    Lose(1, kJeepSlot);
    Lose(1, 4);
    Draw(18);
    WhenWaiting("Radio Yambo stock pick", [this] {
        EXPECT_EQ(Global().BoardText, Board("U mag twee voertuigen naar je kamp overbrengen vanuit de 'Stock'. "
                                            "dubbelklik op de gewenste voertuigen."));
        DoubleClick(Vehicle(1, kJeepSlot));
    });
    When("the second pick",
         [this] { return Waiting() == QStringLiteral("Radio Yambo stock pick") && V().StockPicksLeft == 1; },
         [this] { DoubleClick(Vehicle(1, 4)); });
    PlayTurn();
    ASSERT_NE(Ray(), nullptr);
    EXPECT_EQ(Ray()->Raw, RayText(18, kJeepSlot, 4));
    EXPECT_EQ(B().VehiclePos(1, kJeepSlot), 115) << "the drawer's jeep goes to its island";
    EXPECT_EQ(B().VehiclePos(1, 4), 113);
    EXPECT_EQ(B().VehiclePos(1, 0), 0);
}

TEST_F(RadioYamboTest, OperationLeopardTakesTheEnemysVehicle)
{
    PutOnField(2, 1, 40, 2);
    Draw(6);
    WhenWaiting("Radio Yambo leopard pick", [this] {
        EXPECT_EQ(Global().BoardText, Board("U mag een voertuig van de tegenstander uit het spel nemen. dubbelklik op "
                                            "het gewenste voertuig."));
        DoubleClick(Vehicle(1, 3)); // an own vehicle does not serve it
    });
    When("the enemy's vehicle", [this] { return Waiting() == QStringLiteral("Radio Yambo leopard pick"); },
         [this] { DoubleClick(Vehicle(2, 1)); });
    PlayTurn();
    ASSERT_NE(Ray(), nullptr);
    EXPECT_EQ(Ray()->Raw, RayText(6, 1, 100));
    EXPECT_FALSE(V().LeopardPick);
    EXPECT_EQ(B().VehiclePos(2, 1), 0);
    EXPECT_EQ(B().VehicleCompanies(2, 1), 2) << "no move on the drawer's copy";
    EXPECT_EQ(BoxOf(B().VehiclePicture(2, 1)), (PlacedBox{120, 1095 + 480, 750, 330}));
}

TEST_F(RadioYamboTest, SpyingOnAnEmptyHandShowsOnlyTheBox)
{
    Draw(19);
    PlayTurn();
    EXPECT_EQ(boxes, QStringList{QStringLiteral("Geheime Spionage|Uw tegenstander heeft momenteel geen Personnel "
                                                "kaarten in bezit.")});
}

TEST_F(RadioYamboTest, SpyingShowsEachCardOfTheOpponentUntilDoubleClicked)
{
    Hand(2, {26, 31});
    Draw(19);
    for (int card : {26, 31})
        When("a spied card",
             [this, card] {
                 return Waiting() == QStringLiteral("Radio Yambo spied card") &&
                        W().imgPersTekst->Picture() == CardPicture(card);
             },
             [this] {
                 EXPECT_TRUE(W().Personnel->Visible());
                 EXPECT_EQ(W().imgPersTekst->Tag, QStringLiteral("DK"));
                 EXPECT_EQ(W().imgPersTekst->ToolTip(), QStringLiteral("Dubbelklik op deze kaart om te sluiten."));
                 W().imgPersTekst->Mouse.DblClick();
             });
    PlayTurn();
    EXPECT_TRUE(boxes.isEmpty());
    EXPECT_FALSE(W().Personnel->Visible());
    EXPECT_EQ(W().imgPersTekst->Tag, QString());
    EXPECT_EQ(W().imgPersonnel->ToolTip(), QString());
}

TEST_F(RadioYamboTest, UrgentFuelServiceStopsTheDrawersOwnVehicles)
{
    Draw(1);
    PlayTurn();
    // Four turns without fuel, the first counted off as this turn ends.
    EXPECT_EQ(B().Brandstof(1), 3);
    EXPECT_EQ(B().Brandstof(2), 0);
}

// --- the other copy ---

TEST_F(RadioYamboTest, TheOpponentsMilitaryAttackIsAppliedAndLogged)
{
    FollowTheirCard(QStringLiteral(".ryc"), "[GENERAL]\r\nCARD=8\r\n");
    EXPECT_EQ(B().CampCompanies(2), 12);
    EXPECT_EQ(B().ReserveCompanies(2), 13);
    EXPECT_TRUE(Logged(QStringLiteral("executing automatic radio yambo procedure")));
    EXPECT_TRUE(Logged(QStringLiteral("opponent looses 3 compagnies due to radio yambo card at ")));
}

TEST_F(RadioYamboTest, TheOpponentsFuelServiceIsOnlyShown)
{
    FollowTheirCard(QStringLiteral(".ryc"), "[GENERAL]\r\nCARD=1\r\n");
    EXPECT_EQ(B().Brandstof(2), 0);
    EXPECT_TRUE(Logged(QStringLiteral("showing radio yambo info")));
}

TEST_F(RadioYamboTest, TheOpponentsLeopardTakesTheOwnVehicleIntoStock)
{
    PutOnField(1, 1, 40, 2);
    FollowTheirCard(QStringLiteral(".ray"), RayText(6, 1, 100));
    EXPECT_EQ(boxes, QStringList{kSpecificShown});
    EXPECT_TRUE(Logged(QStringLiteral("executing specific radio yambo procedure")));
    EXPECT_TRUE(Logged(QStringLiteral("executing radio yambo mirror procedure")));
    EXPECT_TRUE(Logged(QStringLiteral("lost one of my vehicles due to operation leopard at ")));
    EXPECT_EQ(B().VehiclePos(1, 1), 0);
    EXPECT_EQ(B().BoardCell(40), 0);
    EXPECT_EQ(B().CampCompanies(1), 15) << "its companies went to the camp";
    EXPECT_TRUE(B().VehiclePicture(1, 1).InStock);
    EXPECT_FALSE(FileExists(TheirPath(".ray")));
}

TEST_F(RadioYamboTest, TheOpponentsAlliedHelpWithOneLostVehicle)
{
    Lose(2, 7);
    FollowTheirCard(QStringLiteral(".ray"), RayText(12, 7, 100));
    EXPECT_EQ(B().VehiclePos(2, 7), 116);
    EXPECT_EQ(B().VehicleTag(2, 7), "commando_2_0_0_w");
    EXPECT_EQ(B().CampCompanies(2), 16);
    EXPECT_TRUE(Logged(QStringLiteral("opponent got a commando back at ")));
}

} // namespace
} // namespace vk::test
